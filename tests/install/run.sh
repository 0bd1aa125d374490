#!/usr/bin/env bash
# Installs the build tree, moves what was installed, and uses it as others would: headers alone, a project through
# find_package, one through pkg-config, and the dynamic loader's choice among the three builds.
# usage: run.sh CMAKE GENERATOR CC CXX BUILD_TREE SOURCE_TREE
set -eu
cmake=$1 generator=$2 cc=$3 cxx=$4 build=$5 source=$6
work=$(mktemp -d "$build/install-test.XXXXXX")
trap 'rm -rf "$work"' EXIT

fail() {
  echo "FAILED: $*"
  exit 1
}

"$cmake" --install "$build" --prefix "$work/first" >"$work/log" || fail "$(cat "$work/log")"
mv "$work/first" "$work/moved"
lib=$(cd "$work/moved" && find lib* -name pkgconfig -printf %h)
lib=$work/moved/$lib
export PKG_CONFIG_PATH=$lib/pkgconfig

echo "== the files"
for directory in "$lib" "$lib/glibc-hwcaps/x86-64-v3" "$lib/glibc-hwcaps/x86-64-v4"; do
  [[ $(readlink "$directory/libkelvm.so.6") == libkelvm.so.6.* ]] || fail "no SONAME link in $directory"
  objdump -p "$directory/libkelvm.so.6" | grep -q 'SONAME *libkelvm.so.6$' || fail "SONAME in $directory"
  if grep -q CMAKE_BUILD_TYPE:STRING=Debug "$build/CMakeCache.txt"; then continue; fi # has paths for the debugger
  if grep -qaF -e "$source" -e "$build" "$directory/libkelvm.so.6"; then fail "$directory knows where it was built"; fi
done

echo "== every header alone, as C99 and as C++17, those in C++ as C++20"
for header in "$work"/moved/include/kelvm/*.h; do
  "$cc" -std=c99 -Wall -Wextra -pedantic -Werror -fsyntax-only -I"$work/moved/include" -x c "$header"
  "$cxx" -std=c++17 -Wall -Wextra -pedantic -Werror -fsyntax-only -I"$work/moved/include" -x c++ -include "$header" \
    /dev/null
done
for header in "$work"/moved/include/kelvm/*.hpp; do
  "$cxx" -std=c++20 -Wall -Wextra -pedantic -Werror -fsyntax-only -I"$work/moved/include" -x c++ -include "$header" \
    /dev/null
done

echo "== find_package"
consumers=$source/tests/install
"$cmake" -S "$consumers/find_package" -B "$work/cmake" -G "$generator" -DCMAKE_C_COMPILER="$cc" \
  -DCMAKE_PREFIX_PATH="$work/moved" -DCMAKE_FIND_USE_PACKAGE_REGISTRY=OFF >"$work/log" && "$cmake" --build "$work/cmake" >>"$work/log" ||
  fail "$(cat "$work/log")"
"$work/cmake/consumer" || fail "the consumer found wrong results"
"$work/cmake/loop" || fail "the loop computed wrong results"
if [[ -e $work/cmake/consumer_f90 ]]; then
  "$work/cmake/consumer_f90" | grep -q '^exp(   1.0) = 2.718281828459045' || fail "wrong results in Fortran"
fi

echo "== pkg-config"
# shellcheck disable=SC2046 # the flags are words
"$cc" -std=c99 -Wall -Wextra -Werror "$consumers/consumer.c" -o "$work/consumer" $(pkg-config --cflags --libs kelvm)
export LD_LIBRARY_PATH=$lib
"$work/consumer" || fail "the consumer found wrong results"
version=$(pkg-config --modversion kelvm)
for place in python/pyproject.toml python/kelvm/__init__.py CHANGELOG.md; do
  grep -Eq "version.* = \"$version\"$|^## \[$version\]" "$source/$place" || fail "$place does not have version $version"
done

echo "== loops through the library of functions of registers"
# shellcheck disable=SC2046 # the flags are words
"$cc" -O3 -Wall -Wextra -Werror "$consumers/loop.c" -o "$work/loop" $(pkg-config --cflags --libs kelvm_simd)
"$work/loop" || fail "the loop computed wrong results"

echo "== the loader picks the build"
loader=$(readelf -l "$work/consumer" | sed -n 's/.*interpreter: \(.*\)\].*/\1/p')
expect() { # code: the picked build, with these arguments to the loader
  local code=$1 picked
  shift
  picked=$("$loader" "$@" "$work/consumer")
  [[ $picked == "$code" ]] || fail "the loader picked $picked, not $code, with '$*'"
  echo "$code as it should be${*:+ with $*}"
}
best=y8
expect y8 --glibc-hwcaps-mask none
for level in v3 v4; do
  if "$loader" --help | grep -q "x86-64-$level (supported"; then
    best=$level
    expect $level --glibc-hwcaps-mask "x86-64-$level"
  else
    echo "skipped: this processor has no x86-64-$level"
  fi
done
expect $best

echo "== a pinned build"
pinned() { # code, then an assignment: the build that is loaded with it
  local picked
  picked=$(env "$2" "$work/consumer")
  [[ $picked == "$1" ]] || fail "$picked was loaded, not $1, with $2"
}
pinned y8 "LD_PRELOAD=$lib/libkelvm.so.6"
for level in v3 v4; do
  "$loader" --help | grep -q "x86-64-$level (supported" || continue
  pinned $level "LD_PRELOAD=$lib/glibc-hwcaps/x86-64-$level/libkelvm.so.6"
  pinned $level "LD_LIBRARY_PATH=$lib/glibc-hwcaps/x86-64-$level"
done
