#!/bin/sh
# gathering.sh object...: every kernel file that is compiled a second time for gather instructions has some. Else its tables
# have come to fit registers, and it should leave the lists in cmake/kelvm_builds.cmake.
set -eu
failed=0
for object in "$@"; do
  nm "$object" | grep -q ' T kels' || continue # what the kernels share
  objdump -d --no-show-raw-insn "$object" | grep -q 'vgather' || { echo "no gather instruction: $object"; failed=1; }
done
exit $failed
