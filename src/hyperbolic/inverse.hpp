// The inverse hyperbolic functions of positive arguments, for any width, on the logarithm core.
//
//   asinh x = ln(x + sqrt(1 + x^2)),                next to 0 its series
//           = ln(1 + (x + x^2 / (1 + sqrt(1 + x^2))))
//   acosh x = ln(1 + (t + sqrt(2t + t^2))),         t = x - 1
//   atanh x = ln(1 + 2x / (1 - x)) / 2
//
// In double numbers each is the logarithm of a sum or quotient of positive terms: relative errors stay small next to 0.
// The forms with head and tail are below 2^-57 next to the borders of their parts, and better elsewhere.
#pragma once

#include "exp/log_core.hpp"
#include "hyperbolic/inverse_tables.hpp"
#include "root/root.hpp"

namespace kelvm::inline KELVM_BUILD {

// --- head and tail --------------------------------------------------------------------------------------------------

/// ln of a sum; the tail below 2^-26 of |head - 1|.
template <class V> inline HeadTail<V> ln_head_tail(HeadTail<V> x) {
  const LogReduced<V> reduced = log_reduce<ExactRows>(x.head);
  LogParts<V> p = log_parts<Natural>(reduced);
  const V r_tail = log1p_correction(reduced, x.tail, p.c);
  p.tail += r_tail - r_tail * p.r; // ln(1 + r) has the slope 1 - r
  return ln_a53(p);
}

/// 0 <= x <= 2^340. Next to 0 the root is 1 + x^2 / 2 to 2^-77, and the logarithm's argument as exact; below 2^-14 two
/// terms of the series.
template <class V> inline HeadTail<V> asinh_head_tail(V x) {
  const V x_head = head_of(x), square = x_head * x_head;
  const HeadTail<V> root = square_root<Reciprocal::exact_at_one>(splat<V>(1), square, (x - x_head) * (x + x_head));
  const HeadTail<V> sum = fast_two_sum(root.head, x);
  const HeadTail<V> y = ln_head_tail(HeadTail<V>{sum.head, sum.tail + root.tail});
  const auto small = x < splat<V>(0x1p-14);
  return {select(small, x, y.head), select(small, (x * (x * x)) * inverse_hyperbolic_tables::asinh_a53[0], y.tail)};
}

/// 1 <= x <= 2^340. The root has the relative accuracy of t = x - 1; where that is rounded, the 1 no longer counts.
/// Next to 1 the sum with x is exact down to the last bit of the root.
template <class V> inline HeadTail<V> acosh_head_tail(V x) {
  const V t = x - 1.0, t_head = head_of(t);
  const HeadTail<V> root = square_root(t + t, t_head * t_head, (t - t_head) * (t + t_head));
  const HeadTail<V> sum = fast_two_sum(x, root.head);
  return ln_head_tail(HeadTail<V>{sum.head, sum.tail + root.tail});
}

/// 0 <= x < 1. The logarithm of the quotient (1 + x) / (1 - x) = 2^k m, whose reduced argument r = m c - 1 is the
/// quotient ((c / 2^k) (1 + x) - (1 - x)) / (1 - x): the numerator, with the few bits of c, is exact, and one
/// reciprocal serves to find k and c, to divide, and to correct the division. Near 2^-53 the errors of 1 + x and 1 - x
/// are as large as the numerator, and belong to it: exactly, for it is a multiple of their last place.
template <class V> inline HeadTail<V> atanh_head_tail(V x) {
  const HeadTail<V> plus = fast_two_sum(splat<V>(1), x), minus = fast_two_sum(splat<V>(1), -x);
  const V inverse = 1.0 / minus.head;
  const LogReduced<V> reduced = log_reduce<ExactRows>(plus.head * inverse);
  LogParts<V> p = log_parts<Natural>(reduced);
  const V c = reduced.inverse_power() * p.c;
  const V plus_head = head_of(plus.head), minus_head = head_of(minus.head);
  const V numerator = (c * plus_head - minus.head) + c * (plus.head - plus_head);
  const HeadTail<V> sum = fast_two_sum(numerator, c * plus.tail - minus.tail);
  p.r = head_of(sum.head * inverse);
  const V rest = ((sum.head - p.r * minus_head) - p.r * (minus.head - minus_head)) + (sum.tail - p.r * minus.tail);
  const HeadTail<V> r = fast_two_sum(p.r, rest * inverse);
  p.r = r.head;
  p.tail += r.tail;
  const HeadTail<V> y = ln_a53(p);
  return {0.5 * y.head, 0.5 * y.tail};
}

// --- one number -----------------------------------------------------------------------------------------------------

template <class V, int N> inline V asinh_series(V x, const Lane<V> (&c)[N]) {
  const V z = x * x;
  return x + (x * z) * horner(z, c);
}
/// x + sqrt(1 + x^2) - 1
template <class V> inline V asinh_beyond_one(V x) {
  const V z = x * x;
  return x + z / (Lane<V>(1) + sqrt(Lane<V>(1) + z));
}
/// x + sqrt(x^2 - 1) - 1
template <class V> inline V acosh_beyond_one(V x) {
  const V t = x - Lane<V>(1);
  return t + sqrt(t * (t + Lane<V>(2)));
}
/// (1 + x) / (1 - x) - 1
template <class V> inline V atanh_beyond_one(V x) { return (x + x) / (Lane<V>(1) - x); }

template <LogAccuracy A, class V> inline V asinh_positive(V x) {
  if constexpr (A == LogAccuracy::a53) {
    const HeadTail<V> y = asinh_head_tail(x);
    return rounded(y);
  } else if constexpr (A == LogAccuracy::a50) {
    return logarithm_1p<A>(asinh_beyond_one(x));
  } else {
    constexpr auto& series = [&]() -> auto& {
      if constexpr (A == LogAccuracy::a24)
        return inverse_hyperbolic_tables::asinh_a24;
      else
        return inverse_hyperbolic_tables::asinh_a26;
    }
    ();
    const V y = logarithm<Natural, A>(log_reduce<LogRows<A>>(x + sqrt(1.0 + x * x)));
    return select(x < splat<V>(0x1p-6), asinh_series(x, series), y);
  }
}
template <LogAccuracy A, class V> inline V acosh(V x) {
  if constexpr (A == LogAccuracy::a53) {
    const HeadTail<V> y = acosh_head_tail(x);
    return rounded(y);
  } else {
    return logarithm_1p<A>(acosh_beyond_one(x));
  }
}
template <LogAccuracy A, class V> inline V atanh_positive(V x) {
  if constexpr (A == LogAccuracy::a53) {
    const HeadTail<V> y = atanh_head_tail(x);
    return rounded(y);
  } else {
    return 0.5 * logarithm_1p<A>(atanh_beyond_one(x));
  }
}

template <FloatLogAccuracy A, class V> inline V float_asinh_positive(V x) {
  if constexpr (A == FloatLogAccuracy::a21) {
    return float_logarithm_1p<A>(asinh_beyond_one(x));
  } else {
    const V y = float_logarithm<Natural, A>(x + sqrt(1.0f + x * x));
    return select(x < splat<V>(0x1p-3f), asinh_series(x, inverse_hyperbolic_tables::asinh_a11), y);
  }
}
template <FloatLogAccuracy A, class V> inline V float_acosh(V x) { return float_logarithm_1p<A>(acosh_beyond_one(x)); }
template <FloatLogAccuracy A, class V> inline V float_atanh_positive(V x) {
  return 0.5f * float_logarithm_1p<A>(atanh_beyond_one(x));
}

/// ln 2x for x >= 2^340, which is asinh x and acosh x there.
template <LogAccuracy A> inline double ln_of_twice(double x) {
  LogReduced<double> reduced = log_reduce<LogRows<A>>(x);
  reduced.k += 1;
  return logarithm<Natural, A>(reduced);
}

} // namespace kelvm::inline KELVM_BUILD
