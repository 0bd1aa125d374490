#!/usr/bin/env bash
# Sets up what is needed, builds the library and runs it on real measurements: the square roots of three centuries of
# yearly sunspot numbers, which even out the spread of such counts.
set -eu
cd "$(dirname "$0")/.."
. scripts/packages.sh

member=kelsSqrt_64f_A53
data=examples/data/sunspots.txt
result=build/demo/result.txt

need_packages g++ cmake ninja-build
cmake -S . -B build/demo -G Ninja -DCMAKE_BUILD_TYPE=Release -DKELVM_BUILD_TESTS=OFF
cmake --build build/demo --target kelvm kelvm-apply

apply=build/demo/tools/apply/kelvm-apply

echo
head -n 3 "$data"
echo
echo "\$ $apply $member $data -o $result"
"$apply" "$member" "$data" -o "$result"
echo
echo "First five and last five of $(wc -l <"$result") years, sunspot number and result:"
paste <(grep -v '^#' "$data") "$result" >build/demo/table.txt
head -n 5 build/demo/table.txt
echo ...
tail -n 5 build/demo/table.txt
