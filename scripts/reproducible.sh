#!/usr/bin/env bash
# Builds the library twice, from copies of the tree in two directories, and compares the three shared objects byte for
# byte. usage: scripts/reproducible.sh
set -eu
cd "$(dirname "$0")/.."
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

for tree in one another/directory; do
  mkdir -p "$work/$tree"
  tar -c --exclude=./build --exclude=./.git . | tar -x -C "$work/$tree"
  cmake -S "$work/$tree" -B "$work/$tree/build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DKELVM_BUILD_TESTS=OFF \
    -DKELVM_BUILD_EXAMPLES=OFF >"$work/log" &&
    cmake --build "$work/$tree/build" --target kelvm kelvm_v3 kelvm_v4 >>"$work/log" ||
    { cat "$work/log"; exit 1; }
done
for build in sse41 avx2 avx512; do
  cmp "$work"/one/build/$build/libkelvm.so "$work"/another/directory/build/$build/libkelvm.so
  echo "$build: the same bytes"
done
