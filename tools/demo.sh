#!/bin/sh
# Installs what the build needs, builds the library in build/ and runs the example hosts in C on real fluids.
set -eu
cd "$(dirname "$0")/.."
tools/packages.sh g++ cmake make libsqlite3-dev
cmake -S . -B build -DCMAKE_BUILD_TYPE=Release -DTESSAREL_TESTS=OFF >/dev/null
cmake --build build -j "$(nproc)" >/dev/null
build/examples/example_separator
printf '\n'
build/examples/example_saturation
