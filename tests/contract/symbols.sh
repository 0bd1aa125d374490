#!/bin/sh
# symbols.sh source-directory library: the shared object exports the functions and the version query, imports
# nothing but memory functions of the C library, keeps no state, and the public headers declare what it exports.
set -eu
source=$1
library=$2
failed=0
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export LC_ALL=C

same() { # what expected found
  if ! diff "$2" "$3" >"$work/diff"; then
    echo "$1 (< expected, > found):"
    cat "$work/diff"
    failed=1
  fi
}

{
  sed -n 's/^KELVM_MEMBER(\(kels[A-Za-z0-9_]*\),.*/\1/p' "$source/src/members.def"
  echo kelvmGetLibVersion
} | sort >"$work/functions"
nm -D --defined-only "$library" | awk '$2 != "A" { print $3 }' | sed 's/@.*//' | sort >"$work/exported"
same "exported names" "$work/functions" "$work/exported"

sed -n 's/^KELVM_API.*[ *]\(kel[A-Za-z0-9_]*\)(.*/\1/p' "$source"/include/kelvm/*.h | sort >"$work/declared"
same "names declared in the headers" "$work/functions" "$work/declared"

# Sanitizers, profilers and the tool chain's own start-up code come in by their reserved names.
imported=$(nm -D --undefined-only "$library" | awk '{ print $2 }' | sed 's/@.*//' |
  grep -Ev '^(mem(cpy|set|move|cmp)|__stack_chk_fail|__cxa_finalize|__gmon_start__|_ITM_.*|__(asan|ubsan|tsan|sanitizer)_.*)$' || true)
if [ -n "$imported" ]; then
  echo "imported names: $imported"
  failed=1
fi
needed=$(readelf -d "$library" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p' | grep -Ev '^lib(c|asan|ubsan|tsan)\.so\.' || true)
if [ -n "$needed" ]; then
  echo "needed libraries: $needed"
  failed=1
fi
if ! readelf -d "$library" | grep -q '(SONAME).*\[libkelvm\.so\.6\]'; then
  echo "SONAME is not libkelvm.so.6"
  failed=1
fi

# No state and nothing to do at load: no variables, no constructors. Sanitizers bring their own.
if ! nm -D --undefined-only "$library" | grep -Eq '__(asan|ubsan|tsan)_'; then
  state=$(objdump -t "$library" | awk '$3 == "O" && $4 ~ /^\.(data|bss|tdata|tbss)$/ && $NF !~ /^(completed|__dso_handle|__TMC_END__)/'
    nm "$library" | grep -E ' _GLOBAL__sub_I_' || true)
  if [ -n "$state" ]; then
    echo "variables or constructors: $state"
    failed=1
  fi
fi
exit $failed
