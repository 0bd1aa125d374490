// Square roots and their reciprocals from the processor's estimate, for reduced accuracies and first guesses.
#pragma once

#include "simd/estimate.hpp"
#include "simd/vec.hpp"

namespace kelvm::inline KELVM_BUILD {

/// An estimate r of x^(-1/2) and s = x r. With the residual e = 1 - s r, (1 - e)^(-1/2) corrects both.
template <class V> struct EstimatedRoot {
  V r, s;
  EstimatedRoot(V x, V estimate) : r(estimate), s(x * r) {}

  /// (1 - e)^(-1/2), about 1 + e/2.
  V correction() const { return sub_mul(splat<V>(1.5), halved(s), r); }
  /// y (1 - e)^(-1/2), by so many terms of its series.
  template <int Terms> V corrected(V y) const {
    if constexpr (Terms == 0) {
      return y;
    } else if constexpr (Terms == 1) {
      return y * correction();
    } else {
      const V e = sub_mul(splat<V>(1), s, r);
      return mul_add(y * e, mul_add(e, mul_add(e, splat<V>(0.3125), splat<V>(0.375)), splat<V>(0.5)), y);
    }
  }
};

/// The same for a zero, too, which has a huge r and s = 0.
template <class V> EstimatedRoot<V> estimated_root(V x) {
  return {x,
          smaller_of(inverse_sqrt_estimate(x), splat<V>(sizeof(Lane<V>) == 8 ? Lane<V>(0x1p1000) : Lane<V>(0x1p100)))};
}

} // namespace kelvm::inline KELVM_BUILD
