#!/usr/bin/env bash
# Sets up what is needed, builds everything optimised and runs the tests. Not among them: the exhaustive runs (ctest
# --test-dir build/release -L exhaustive) and the speed measurements. The exit status is that of the first step that
# fails.
set -eu
cd "$(dirname "$0")/.."
. scripts/packages.sh

need_packages g++ cmake ninja-build pkgconf libgtest-dev libgmock-dev libmpfr-dev libmpc-dev libboost-dev \
  python3-{dev,numpy,scipy,pandas,xarray,dask,distributed,pytest,hypothesis,pip,venv}
cmake --preset release
cmake --build --preset release
ctest --test-dir build/release -LE '^(exhaustive|bench)$' --output-on-failure --no-tests=error -j "$(nproc)"
