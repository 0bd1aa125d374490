// A quotient and what it leaves of the dividend, for any width.
#pragma once

#include "exact/double_word.hpp"

namespace kelvm::inline KELVM_BUILD {

template <class V> struct QuotientAndRest { V quotient, rest; };

/// n / d given inverse = 1 / d as it rounds, to an ulp or two, and rest = n - quotient d, exact but for its last bit.
/// `Short`, as without fused operations, the quotient has 26 bits, truncated, so that its product with the upper bits
/// of d, and its square, are exact.
template <bool Short = !has_fused, class V> inline QuotientAndRest<V> divide(V n, V d, V inverse) {
  static_assert(Short || has_fused);
  const V quotient = Short ? head_of(n * inverse) : n * inverse;
  if constexpr (has_fused) {
    return {quotient, sub_mul(n, quotient, d)};
  } else {
    const V upper = head_of(d);
    return {quotient, (n - quotient * upper) - quotient * (d - upper)};
  }
}

} // namespace kelvm::inline KELVM_BUILD
