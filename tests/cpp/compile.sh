#!/usr/bin/env bash
# What the compilers say of the C++ headers: every example of the documentation compiles as C++20 and C++23, wrong use is
# refused in one sentence.
# usage: compile.sh SOURCE_TREE CXX...
set -eu
source=$1
shift
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failed=0

# The examples, a function each, and calls with policies.
{
  echo '#include <vector>'
  echo '#include "kelvm/parallel.hpp"'
  awk '/^\/\/\/ @code/ { print "void example_" ++n "();\nvoid example_" n "() {"; inside = 1; next }
       /^\/\/\/ @endcode/ { print "}"; inside = 0 }
       inside { sub("^/// ", ""); print }' "$source/include/kelvm/kelvm.hpp"
  echo 'kelvm::status parallel(const std::vector<float>& x, std::vector<float>& y);'
  echo 'kelvm::status parallel(const std::vector<float>& x, std::vector<float>& y) {'
  echo '  return kelvm::exp<kelvm::accuracy::low>(std::execution::par_unseq, x, y); }'
} >"$work/examples.cpp"
[[ $(grep -c 'kelvm::' "$work/examples.cpp") -gt 50 ]] || { echo "FAILED: no examples found"; exit 1; }

# expression | what the compiler has to say
refused() {
  cat <<'END'
kelvm::exp(ints, reals) | the elements of a range are float, double, std::complex<float> or std::complex<double>
kelvm::exp(reals, ints) | the ranges of a call have elements of the same type
kelvm::exp(floats, reals) | the ranges of a call have elements of the same type
kelvm::add(reals, floats, reals) | the ranges of a call have elements of the same type
kelvm::exp(complexes, reals) | the ranges of a call have elements of the same type
kelvm::cis(reals, reals) | the ranges of a call have elements of the same type
kelvm::sincos(reals, reals, floats) | the ranges of a call have elements of the same type
kelvm::exp(list, reals) | an input is a contiguous range with a size
kelvm::exp(2.0, reals) | an input is a contiguous range with a size
kelvm::add(reals, list, reals) | an input is a contiguous range with a size
kelvm::exp(reals, list) | an output is a contiguous range with a size that outlives the call
kelvm::exp(reals, std::vector<double>(3)) | an output is a contiguous range with a size that outlives the call
kelvm::exp(reals, reals.data()) | an output is a contiguous range with a size that outlives the call
kelvm::exp(reals, std::as_const(reals)) | the elements of an output must not be const
kelvm::cbrt(complexes, complexes) | this function takes real numbers only
kelvm::conj(reals, reals) | this function takes complex numbers only
kelvm::pow(reals, nullptr, reals) | an exponent is a range, or one number
kelvm::pow(reals, std::complex<double>(2), reals) | an exponent is a range, or one number
END
}

cat >"$work/before.hpp" <<'END' # precompiled
#include <list>
#include <vector>
#include "kelvm/kelvm.hpp"
extern std::vector<double> reals;
extern std::vector<float> floats;
extern std::vector<std::complex<double>> complexes;
extern std::vector<int> ints;
extern std::list<double> list;
END

for cxx in "$@"; do
  for standard in c++20 c++2b; do
    "$cxx" -std=$standard -Wall -Wextra -pedantic -Werror -I"$source/include" -fsyntax-only "$work/examples.cpp" ||
      { echo "FAILED: the examples with $cxx -std=$standard"; failed=1; }
  done
  "$cxx" -std=c++20 -I"$source/include" -x c++-header "$work/before.hpp" -o "$work/before.hpp.gch"
  while IFS='|' read -r call sentence; do
    echo "void call() { $call; }" >"$work/refused.cpp"
    "$cxx" -std=c++20 -include "$work/before.hpp" -fsyntax-only "$work/refused.cpp" 2>&1 | grep 'error:' >"$work/errors" || true
    if [[ $(wc -l <"$work/errors") != 1 ]] || ! grep -q "static.assert.*kelvm:$sentence" "$work/errors"; then
      echo "FAILED: $cxx takes $call, or does not say:$sentence; but"
      cat "$work/errors"
      failed=1
    fi
  done < <(refused)
done
exit $failed
