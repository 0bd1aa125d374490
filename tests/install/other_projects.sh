#!/usr/bin/env bash
# kelvm as a part of another project, and as a static library. usage: other_projects.sh BUILD_TREE
set -eu
build=$1
cd "$(dirname "$0")"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() {
  echo "FAILED: $*"
  exit 1
}
quietly() { "$@" >"$work/log" 2>&1 || fail "$* $(cat "$work/log")"; }

echo "== a parent's settings and install tree stay its own"
# Flags that would break the arithmetic and the choice of processor, if the library's own did not come after them.
hostile="-march=native -ffast-math"
quietly cmake -S parent -B "$work/parent" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$work/prefix" \
  -DCMAKE_CXX_FLAGS="$hostile" -DCMAKE_C_FLAGS="$hostile"
quietly cmake --build "$work/parent"
quietly cmake --install "$work/parent"
[[ $(cd "$work/prefix" && find . -type f) == ./bin/consumer ]] || fail "installed: $(find "$work/prefix" -type f)"
[[ $("$work/parent/consumer") == y8 ]] || fail "the parent's consumer"

echo "== the same bits in spite of the parent's flags"
mkdir "$work/builds"
ln -s "$work/parent/kelvm/sse41" "$build/avx2" "$build/avx512" "$work/builds"
"$build/tests/identity/kelvm-identity" "$work/builds" ../identity/hashes.txt ../accuracy/limits.txt || fail "other bits"

echo "== a static library"
cmake -S ../.. -B "$work/static" -G Ninja -DBUILD_SHARED_LIBS=OFF -DKELVM_BUILD_TESTS=ON >/dev/null 2>&1 &&
  fail "the tests need the shared libraries"
quietly cmake -S ../.. -B "$work/static" -G Ninja -DBUILD_SHARED_LIBS=OFF -DKELVM_BUILD_TESTS=OFF
quietly cmake --build "$work/static"
quietly cmake --install "$work/static" --prefix "$work/static-prefix"
[[ -z $(find "$work/static-prefix" -name '*.so*') ]] || fail "shared libraries among the static ones"
quietly cmake -S find_package -B "$work/consumer" -G Ninja -DCMAKE_PREFIX_PATH="$work/static-prefix"
quietly cmake --build "$work/consumer"
[[ $("$work/consumer/consumer") == y8 ]] || fail "the consumer of the static library"
if ldd "$work/consumer/consumer" | grep -E 'kelvm|libm\.|stdc'; then fail "the consumer needs more than the C library"; fi
