#!/bin/sh
# Installs what the tests need, builds everything in build/ and runs all tests.
set -eu
cd "$(dirname "$0")/.."
tools/packages.sh g++ gcc gfortran cmake make libsqlite3-dev libgtest-dev python3 pkg-config binutils
cmake -S . -B build -DCMAKE_BUILD_TYPE=Release -DTESSAREL_TESTS=ON >/dev/null
cmake --build build -j "$(nproc)"
ctest --test-dir build --output-on-failure -j "$(nproc)"
