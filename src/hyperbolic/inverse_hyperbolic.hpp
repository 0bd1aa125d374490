// The inverse hyperbolic functions of positive arguments, for any width, on the logarithm core.
//
//   asinh x = ln(x + sqrt(1 + x^2)),                next to 0 its series
//           = ln(1 + (x + x^2 / (1 + sqrt(1 + x^2))))
//   acosh x = ln(1 + (t + sqrt(2t + t^2))),         t = x - 1
//   atanh x = ln(1 + 2x / (1 - x)) / 2
//
// In double numbers each is the logarithm of a sum or quotient of positive terms: relative errors stay small next to 0.
// The forms as double-words are below 2^-57 next to the borders of their parts, and better elsewhere.
#pragma once

#include "exact/double_word.hpp"
#include "exp/log_core.hpp"
#include "hyperbolic/inverse_hyperbolic_tables.hpp"
#include "root/root.hpp"

namespace kelvm::inline KELVM_BUILD {

// --- double-word --------------------------------------------------------------------------------------------------

/// ln of a sum; the tail below 2^-26 of |head - 1|.
template <class V> inline DoubleWord<V> ln_double_word(DoubleWord<V> x) {
  const LogReduced<V> reduced = log_reduce<ExactRows>(x.hi);
  LogParts<V> p = log_parts<Natural>(reduced);
  const V r_tail = log1p_correction(reduced, x.lo, p.c);
  p.lo += sub_mul(r_tail, r_tail, p.r); // ln(1 + r) has the slope 1 - r
  return ln_full(p);
}

/// x^2: rounded and the error, or the square of the upper bits and the rest to 2^-53 of it.
template <class V> inline DoubleWord<V> square_of(V x) {
  if constexpr (has_fused) {
    const V square = x * x;
    return {square, mul_sub(x, x, square)};
  } else {
    const V head = head_of(x);
    return {head * head, (x - head) * (x + head)};
  }
}

/// 0 <= x <= 2^340. Next to 0 the root is 1 + x^2 / 2 to 2^-77, and the logarithm's argument as exact; below 2^-14 two
/// terms of the series.
template <class V> inline DoubleWord<V> asinh_double_word(V x) {
  const DoubleWord<V> square = square_of(x);
  const DoubleWord<V> root = square_root<Reciprocal::exact_at_one>(splat<V>(1), square.hi, square.lo);
  const DoubleWord<V> sum = fast_two_sum(root.hi, x);
  const DoubleWord<V> y = ln_double_word(DoubleWord<V>{sum.hi, sum.lo + root.lo});
  const auto small = x < splat<V>(0x1p-14);
  return {select(small, x, y.hi), select(small, (x * (x * x)) * inverse_hyperbolic_tables::asinh_full[0], y.lo)};
}

/// 1 <= x <= 2^340. The root has the relative accuracy of t = x - 1; where that is rounded, the 1 no longer counts.
/// Next to 1 the sum with x is exact down to the last bit of the root.
template <class V> inline DoubleWord<V> acosh_double_word(V x) {
  const V t = x - 1.0;
  const DoubleWord<V> square = square_of(t);
  const DoubleWord<V> root = square_root(t + t, square.hi, square.lo);
  const DoubleWord<V> sum = fast_two_sum(x, root.hi);
  return ln_double_word(DoubleWord<V>{sum.hi, sum.lo + root.lo});
}

/// 0 <= x < 1. The logarithm of the quotient (1 + x) / (1 - x) = 2^k m, whose reduced argument r = m c - 1 is the
/// quotient ((c / 2^k) (1 + x) - (1 - x)) / (1 - x): the numerator, with the few bits of c, is exact, and one
/// reciprocal serves to find k and c, to divide, and to correct the division. Near 2^-53 the errors of 1 + x and 1 - x
/// are as large as the numerator, and belong to it: exactly, for it is a multiple of their last place.
template <class V> inline DoubleWord<V> atanh_double_word(V x) {
  const DoubleWord<V> plus = fast_two_sum(splat<V>(1), x), minus = fast_two_sum(splat<V>(1), -x);
  const V inverse = 1.0 / minus.hi;
  const LogReduced<V> reduced = log_reduce<ExactRows>(plus.hi * inverse);
  LogParts<V> p = log_parts<Natural>(reduced);
  const V c = reduced.inverse_power() * p.c;
  V numerator;
  if constexpr (has_fused) {
    numerator = mul_sub(c, plus.hi, minus.hi);
  } else {
    const V plus_head = head_of(plus.hi);
    numerator = (c * plus_head - minus.hi) + c * (plus.hi - plus_head);
  }
  const DoubleWord<V> sum = fast_two_sum(numerator, mul_sub(c, plus.lo, minus.lo));
  auto [quotient, rest] = divide(sum.hi, minus.hi, inverse);
  rest += sub_mul(sum.lo, quotient, minus.lo);
  const DoubleWord<V> r = fast_two_sum(quotient, rest * inverse);
  p.r = r.hi;
  p.lo += r.lo;
  return 0.5 * ln_full(p);
}

// --- one number -----------------------------------------------------------------------------------------------------

template <class V, int N> inline V asinh_series(V x, const Lane<V> (&c)[N]) {
  const V z = x * x;
  return mul_add(x * z, horner(z, c), x);
}
/// x + sqrt(1 + x^2) - 1
template <class V> inline V asinh_beyond_one(V x) {
  const V one = splat<V>(1);
  return x + (x * x) / (one + sqrt(mul_add(x, x, one)));
}
/// sqrt(x^2 - 1), from t = x - 1
template <class V> inline V acosh_root(V t) { return sqrt(t * (t + Lane<V>(2))); }
/// x + sqrt(x^2 - 1) - 1
template <class V> inline V acosh_beyond_one(V x) {
  const V t = x - Lane<V>(1);
  return t + acosh_root(t);
}
/// (1 + x) / (1 - x) - 1
template <class V> inline V atanh_beyond_one(V x) { return (x + x) / (Lane<V>(1) - x); }

/// ln(1 + x) of a positive x in the arithmetic of the lanes.
template <Accuracy A, class V> inline V ln_1p(V x) {
  if constexpr (sizeof(Lane<V>) == 8)
    return logarithm_1p<A, Arguments::positive>(x);
  else
    return float_logarithm_1p<A>(x);
}

template <Accuracy A, class V> inline V asinh_positive(V x) {
  using namespace inverse_hyperbolic_tables;
  if constexpr (A == Accuracy::full) {
    const DoubleWord<V> y = asinh_double_word(x);
    return rounded(y);
  } else if constexpr (A == Accuracy::bits50 || A == Accuracy::bits21) {
    return ln_1p<A>(asinh_beyond_one(x));
  } else if constexpr (A == Accuracy::bits11) {
    const V y = float_logarithm<Natural, A>(x + sqrt(mul_add(x, x, splat<V>(1))));
    return select(x < splat<V>(0x1p-3f), asinh_series(x, asinh_bits11), y);
  } else {
    const V y = logarithm<Natural, A>(log_reduce<LogRows<A>>(x + sqrt(mul_add(x, x, splat<V>(1)))));
    const auto small = x < splat<V>(0x1p-6);
    if constexpr (A == Accuracy::bits40)
      return select(small, asinh_series(x, asinh_bits40), y);
    else
      return select(small, asinh_series(x, asinh_bits27), y);
  }
}
template <Accuracy A, class V> inline V acosh(V x) {
  if constexpr (A == Accuracy::full) {
    const DoubleWord<V> y = acosh_double_word(x);
    return rounded(y);
  } else if constexpr (A == Accuracy::bits27) {
    // Next to 1 the sum, 1 + sqrt(2t), is rounded by at most 2^-53 and t no less than 2^-52: 2^-27.5 of the logarithm.
    return logarithm<Natural, A>(log_reduce<LogRows<A>>(x + acosh_root(x - 1.0)));
  } else {
    return ln_1p<A>(acosh_beyond_one(x));
  }
}
template <Accuracy A, class V> inline V atanh_positive(V x) {
  if constexpr (A == Accuracy::full) {
    const DoubleWord<V> y = atanh_double_word(x);
    return rounded(y);
  } else {
    return Lane<V>(0.5) * ln_1p<A>(atanh_beyond_one(x));
  }
}

/// ln 2x for x >= 2^340, which is asinh x and acosh x there.
template <Accuracy A> inline double ln_of_twice(double x) {
  LogReduced<double> reduced = log_reduce<LogRows<A>>(x);
  reduced.k += 1;
  return logarithm<Natural, A>(reduced);
}

} // namespace kelvm::inline KELVM_BUILD
