// tanh |x| = e / (e + 2) with e = e^(2|x|) - 1, for any width: relative errors of e do not grow, and nothing cancels
// next to 0. From `saturated` on the result is 1; larger arguments are taken as this one.
#pragma once

#include "exp/exp_core.hpp"

namespace kelvm::inline KELVM_BUILD {

/// 1 - tanh 20 is below 2^-56.
inline constexpr double tanh_saturated = 20;
template <class V> inline V tanh_clamped(V x, Lane<V> limit) { return smaller_of(abs(x), splat<V>(limit)); }

/// hi + rest inverse
template <class V> struct Quotient {
  V hi, rest, inverse;
  DoubleWord<V> double_word() const { return {hi, rest * inverse}; }
  V rounded() const { return mul_add(rest, inverse, hi); }
};

/// tanh x, 0 <= x <= 20, with a relative error below 2^-57, the second term below 2^-24 of the first. e = (hi + lo)
/// scale; the quotient does not depend on the scale. What its upper word leaves of the dividend is exact but for
/// rounding errors of the small parts: by a fused operation, which wants a normalised dividend, or with 26 bits for the
/// quotient and the upper part of the denominator.
template <class V> inline Quotient<V> tanh_quotient(V x) {
  const Expm1Parts<V> e = expm1_full<Arguments::positive>(x + x);
  const V two = 2.0 * inverse_power_of_two(e.scale);
  if constexpr (has_fused) {
    const DoubleWord<V> dividend = fast_two_sum(e.hi, e.lo);
    const DoubleWord<V> sum = two_sum(dividend.hi, two);
    const V inverse = 1.0 / sum.hi;
    const V quotient = dividend.hi * inverse;
    const V rest = sub_mul(dividend.hi, quotient, sum.hi) + sub_mul(dividend.lo, quotient, sum.lo + dividend.lo);
    return {quotient, rest, inverse};
  } else {
    const DoubleWord<V> sum = two_sum(e.hi, two);
    const V denominator = sum.hi + e.lo;
    const V denominator_head = head_of(denominator);
    const V denominator_tail = ((sum.hi - denominator_head) + sum.lo) + e.lo;
    const V inverse = 1.0 / denominator;
    const V head = head_of((e.hi + e.lo) * inverse);
    return {head, (e.hi - head * denominator_head) + (e.lo - head * denominator_tail), inverse};
  }
}

/// tanh x, 0 <= x <= 20.
template <Accuracy A, class V> inline V tanh_positive(V x) {
  if constexpr (A == Accuracy::full) {
    return tanh_quotient(x).rounded();
  } else {
    const V e = exp_minus_1<A, Arguments::positive>(x + x);
    return e / (e + 2.0);
  }
}

} // namespace kelvm::inline KELVM_BUILD
