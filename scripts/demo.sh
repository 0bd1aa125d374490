#!/usr/bin/env bash
# Sets up what is needed, builds the library for this processor and runs it on real measurements: functions of three
# centuries of yearly sunspot numbers, beside plain loops over the C library, in time and in accuracy.
set -eu
cd "$(dirname "$0")/.."
. scripts/packages.sh

need_packages g++ cmake ninja-build pkgconf libmpfr-dev libmpc-dev libboost-dev
mkdir -p build
cmake -S . -B build/demo -G Ninja -DCMAKE_BUILD_TYPE=Release -DKELVM_BUILD_TESTS=OFF >build/demo.log || {
  cat build/demo.log
  exit 1
}
# Where the dynamic loader would find the builds if they were installed.
best=sse41
for level in v3:avx2 v4:avx512; do
  if /lib64/ld-linux-x86-64.so.2 --help | grep -q "x86-64-${level%:*} (supported"; then best=${level#*:}; fi
done
case $best in sse41) target=kelvm ;; avx2) target=kelvm_v3 ;; avx512) target=kelvm_v4 ;; esac
cmake --build build/demo --target kelvm "$target" kelvm-demo kelvm-apply
export LD_LIBRARY_PATH=$PWD/build/demo/$best

echo
build/demo/tools/demo/kelvm-demo examples/data/sunspots.txt
echo
echo "Fewer bits are computed faster. What they cost on these data:"
echo "\$ kelvm-apply --compare mpfr kelsLog1p_32f_A11 examples/data/sunspots.txt"
build/demo/tools/apply/kelvm-apply --compare mpfr kelsLog1p_32f_A11 examples/data/sunspots.txt
