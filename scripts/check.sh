#!/usr/bin/env bash
# Sets up what is needed, builds everything optimised and runs the tests. Not among them: the slow ones (ctest --test-dir
# build/release -L slow) and the speed measurements. The exit status is that of the first step that
# fails. With --all the extended check follows: other compilers, optimisations and sanitizers, the library in other
# projects, formatting, tables. It goes on after a failure and ends with the steps, their times and how many passed.
# usage: scripts/check.sh [--all]
set -eu
cd "$(dirname "$0")/.."
. scripts/packages.sh

tests() { # PRESET [CTEST-ARGUMENT...]: those of the default run, unless others are named
  local preset=$1
  shift
  [[ $# != 0 ]] || set -- -LE '^slow$'
  ctest --test-dir "build/$preset" "$@" --output-on-failure --no-tests=error -j "$(nproc)"
}
build() { # PRESET [BUILD-ARGUMENT...]
  local preset=$1
  shift
  cmake --preset "$preset" && cmake --build --preset "$preset" "$@"
}

plain_packages=(g++ cmake ninja-build pkgconf libgtest-dev libgmock-dev libmpfr-dev libmpc-dev libboost-dev libtbb-dev
  gfortran mandoc python3-{dev,numpy,matplotlib,scipy,pandas,xarray,dask,distributed,pytest,hypothesis,pip,venv})
need_packages "${plain_packages[@]}"
build release
tests release
[[ ${1-} == --all ]] || exit 0

contract() { # PRESET FILTER: those tests of the contract whose names match, of which there must be some
  local program=build/$1/tests/contract/kelvm-contract
  [[ -n $("$program" --gtest_list_tests --gtest_filter="$2") ]] && "$program" --gtest_brief=1 --gtest_filter="$2"
}

# The steps of the extended check. Bash runs them with "set -e" off: each chains its commands.
# What clang-format prints counts: its own --dry-run complains of comments that it leaves alone.
formatting() {
  local file files result=0
  mapfile -t files < <(find . -path ./build -prune -o -name '*.[ch]' -print -o -name '*.[ch]pp' -print)
  [[ ${#files[@]} != 0 ]] || return
  for file in "${files[@]}"; do
    clang-format "$file" | cmp -s - "$file" || { echo "$file is not as clang-format has it"; result=1; }
  done
  return $result
}
# Not the accuracy tests, here and for clang: the bits are those of the library that passed them.
unoptimised() {
  build debug --target kelvm kelvm_v3 kelvm_v4 kelvm_simd kelvm-identity kelvm-special kelvm-contract &&
    tests debug -R '^(identity|special\.)' && contract debug '*ADestination*:*TheCallersMode*'
}
one_definition() {
  local library objects
  for library in kelvm kelvm_v3 kelvm_v4; do
    mapfile -t objects < <(find build/debug/CMakeFiles -regex ".*/$library\(_by_[a-z]*\)?\.dir/src/.*\.o")
    scripts/one_definition "${objects[@]}" || return
  done
  scripts/one_definition build/debug/CMakeFiles/kelvm_simd_*.dir/src/*/*.o # all in one library
}
not_inlined() { build no-inline --target kelvm-identity && tests no-inline -R '^identity'; }
# All kernel files in one translation unit, then the bits of that.
unity() {
  build unity --target kelvm --target kelvm_v3 --target kelvm_v4 &&
    build/release/tests/identity/kelvm-identity build/unity tests/identity/hashes.txt tests/accuracy/limits.txt
}
clang() {
  build clang --target kelvm kelvm_v3 kelvm_v4 kelvm-identity kelvm-special kelvm-contract kelvm-declarations &&
    tests clang -R '^(identity|declarations$|(special|contract)\.|symbols\.(sse41|avx))'
}
address_and_undefined() {
  build asan-ubsan --target kelvm-contract || return
  local set
  # Statuses: what signalling NaNs raise depends on the optimiser. 77: this processor cannot run the build.
  for set in sse41 avx2 avx512; do
    KELVM_TESTED_BUILD=$set contract asan-ubsan '-*EveryLengthAtEveryOffset*:Statuses.*' || [[ $? == 77 ]] || return
  done
}
threads() { build tsan --target kelvm-contract && contract tsan 'Threads.*'; }
other_projects() { tests release -R '^other_projects$'; }
binary_interface() { scripts/abi; }
tables() { tools/tables/regenerate; }

need_packages clang clang-format libclang-rt-14-dev git python3-gmpy2 sollya abigail-tools
passed=0 failed=0 summary=
for step in formatting unoptimised one_definition not_inlined unity clang address_and_undefined threads other_projects \
  binary_interface tables; do
  echo
  echo "== ${step//_/ }"
  start=$SECONDS result=passed
  "$step" || result=FAILED
  [[ $result == passed ]] && passed=$((passed + 1)) || failed=$((failed + 1))
  summary+=$(printf '%-24s %s %5d s' "${step//_/ }" "$result" $((SECONDS - start)))$'\n'
done
echo
echo "$summary"
echo "After the plain check: $passed passed, $failed failed"
[[ $failed == 0 ]]
