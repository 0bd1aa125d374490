#!/bin/sh
# symbols.sh source-directory library: the shared object exports every form of every function of functions.def and nothing
# else, without versions, so that it may take the place of the C library's; it needs that library at most.
set -eu
export LC_ALL=C
source=$1
library=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

sed -n 's/^KELVM_REGISTERS\(_LIBM\)\{0,1\}(\([a-z0-9_]*\), [A-Za-z0-9]*, \([A-Z_]*\))$/\2 \3 \1/p' \
  "$source/src/registers/functions.def" | awk '
  BEGIN { split("b c d e", letter); split("2 4 4 8", doubles) }
  function names(name, shape, lanes, l, bytes,   v) {
    v = shape == "BINARY" ? "vv" : "v"
    if (shape == "TWO_OUTPUTS") {
      print "_ZGV" l "N" lanes "vvv_" name
      print "_ZGV" l "N" lanes "vl" bytes "l" bytes "_" name
    } else {
      print "_ZGV" l "N" lanes v "_" name
      print "_ZGV" l "M" lanes v "_" name
    }
  }
  {
    for (i = 1; i <= 4; ++i) {
      names("kelvm_" $1, $2, doubles[i], letter[i], 8)
      names("kelvm_" $1 "f", $2, 2 * doubles[i], letter[i], 4)
      if ($3 != "") {
        names($1, $2, doubles[i], letter[i], 8)
        names($1 "f", $2, 2 * doubles[i], letter[i], 4)
      }
    }
    print "kelvm_" $1
    print "kelvm_" $1 "f"
  }' | sort >"$work/expected"
nm -D --defined-only "$library" | awk '{ print $3 }' | sort >"$work/exported"
diff "$work/expected" "$work/exported" || { echo "exported names differ (< expected, > found)"; exit 1; }

sed -n 's/^KELVM_LOOP[A-Z_]* [a-z]* \(kelvm_[a-z0-9_]*\)(.*/\1/p' "$source/include/kelvm/loops.h" | sort >"$work/declared"
grep '^kelvm_' "$work/exported" | diff - "$work/declared" || { echo "kelvm/loops.h differs (> declared)"; exit 1; }

if nm -D --undefined-only "$library" | grep -Ev ' (mem(cpy|set)|__stack_chk_fail|__cxa_finalize|__gmon_start__|_ITM_.*|__(asan|ubsan|tsan|sanitizer)_.*)(@|$)'; then
  echo "imported names"
  exit 1
fi
soname=$(basename "$library" | sed 's/\.so.*//').so.6
readelf -d "$library" | grep -q "(SONAME).*\[$soname\]" || { echo "SONAME is not $soname"; exit 1; }
