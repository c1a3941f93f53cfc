#!/bin/sh
# Builds the function for Octave against the library in a build directory (default build/) and runs its tests.
set -eu
cd "$(dirname "$0")/.."
tools/packages.sh octave octave-dev
library=$PWD/${1:-build}/lib
mkdir -p build-octave
mkoctfile --mex -Wall -Wextra -o build-octave/tessarel.mex octave/tessarel.c -Iinclude -L"$library" -ltessarel \
  -Wl,-rpath,"$library"
octave --quiet --norc tests/octave/test_tessarel.m build-octave
