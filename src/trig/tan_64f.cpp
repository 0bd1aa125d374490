// Tangent, double; see tangent.hpp for the methods.
//
//          by                                                            error
//   A53    a table; t = tan r, sum, difference, quotient double-words    0.53 ulp
//   A50    a quotient of degrees 7 and 6                                 2^-50.2
//   A26    a quotient of degrees 5 and 4                                 2^-35
//
// A53: computed of |x|, so that rounding cannot make it other than odd. With fused operations 1 - T t is a double-word,
// and the quotient's remainder is exact. Without them the product T t, at most 0.05, is rounded, which costs 0.03 ulp
// of 1 - T t, and the quotient has 26 bits, so that its product with the denominator, taken in two pieces, is exact.
//
// A50, in units of 2^-53: r 2 next to the zeros and poles, elsewhere 1, which counts up to 1.6 times; r^2 0.5, N 0.7,
// its product 1, D 1.2, the quotient 1, the fit 0.3.
#include "exact/double_word.hpp"
#include "frame/export.hpp"
#include "kelvm/trig.h"
#include "trig/tangent.hpp"

namespace kelvm::inline KELVM_BUILD::tan_64f {
namespace {

/// reduce() of sine_cosine.hpp with fused steps.
template <class V> inline Remainder<V> fused_reduce(V x) {
  const V shifted = mul_add(x, splat<V>(thirty_two_over_pi), splat<V>(rounding_constant<double>));
  const V k = shifted - rounding_constant<double>;
  const V second = splat<V>(parts_of_pi_32[1]);
  const V t = sub_mul(x, k, splat<V>(parts_of_pi_32[0]));
  const V hi = sub_mul(t, k, second);
  return {hi, sub_mul(sub_mul(t - hi, k, second), k, splat<V>(parts_of_pi_32[2])), int_bits(shifted)};
}
template <class V> inline Remainder<V> fused_reduce_any(V x) {
  const WithinReach<V> within(x);
  const Remainder<V> r = fused_reduce(within.y);
  return {r.hi, r.lo + within.lo, r.index + within.index};
}

/// tan of a remainder with tail, index >= 0 or of a reduced argument.
template <class V> inline DoubleWord<V> long_tangent(const Remainder<V>& r) {
  const auto [table, table_tail] = lookup_pair<tangent_double_word>(r.index & 15);
  const V z = r.hi * r.hi;
  const DoubleWord<V> t = fast_two_sum(r.hi, mul_add(z, mul_add(r.hi, estrin(z, tangent_5), r.lo), r.lo));

  const DoubleWord<V> sum = fast_two_sum(table, t.hi);
  const V sum_tail = sum.lo + (table_tail + t.lo);
  const V one = splat<V>(1);
  V difference, left; // 1 - T t.hi and what is left of it
  if constexpr (has_fused) {
    difference = sub_mul(one, table, t.hi);
    left = sub_mul(one - difference, table, t.hi);
  } else {
    const V product = table * t.hi;
    difference = one - product;
    left = (one - difference) - product;
  }
  const V difference_tail = left - mul_add(table, t.lo, table_tail * t.hi);

  const Int<V> odd = odd_quarters(r.index);
  const V numerator = select(odd, difference, sum.hi), numerator_tail = select(odd, difference_tail, sum_tail);
  const V denominator = select(odd, sum.hi, difference), denominator_tail = select(odd, sum_tail, difference_tail);

  const V reciprocal = 1.0 / denominator;
  auto [quotient, rest] = divide(numerator, denominator, reciprocal);
  rest += sub_mul(numerator_tail, quotient, denominator_tail);
  const Bits<V> sign = sign_of(bit_cast<V>(odd));
  return {flip_sign(quotient, sign), flip_sign(rest * reciprocal, sign)};
}

struct TanA53 {
  template <class V> static V of(V x) { return flip_sign(rounded(long_tangent(fused_reduce(abs(x)))), sign_of(x)); }
  /// x >= 0
  template <class V> static V of_any(V x) { return rounded(long_tangent(fused_reduce_any(x))); }
};

template <auto& Numerator, auto& Denominator> struct TanShort {
  template <class V> static V of(V x) { return tangent_quotient(quarter_turns(x), Numerator, Denominator); }
  /// x >= 0
  template <class V> static V of_any(V x) {
    const WithinReach<V> within(x);
    const QuarterTurns<V> angle = quarter_turns(within.y);
    return tangent_quotient(QuarterTurns<V>{angle.r + within.lo, angle.odd ^ bit_cast<Bits<V>>(within.index << 59)},
                            Numerator, Denominator);
  }
};

template <class P> struct Tan64 : KernelDefaults {
  using Element = double;
  static constexpr bool spurious_underflow = true; // powers of small remainders
  static constexpr bool has_wide_formula = true;

  static constexpr Magnitudes ordinary{0x1p-60, 90111};
  template <class V> static SignMask<V> special(V x) {
    return above(abs(x), 0x1.5ffffffffffffp+16);
  } // |x| >= 90112, NaN
  template <class V> static V formula(V x) { return P::of(x); }
  template <class V> static V wide_formula(V x) { return flip_sign(P::of_any(abs(x)), sign_of(x)); }
  template <class V> static V nan_result(V) { return splat<V>(default_nan<double>()); }
  static double element(double x, kelStatus& status) {
    return is_nan(x) ? nan_result(x) : domain_error<double>(status);
  }
};

} // namespace

KELVM_UNARY(kelsTan_64f_A26, Tan64<TanShort<tangent_26_numerator, tangent_26_denominator>>)
KELVM_UNARY(kelsTan_64f_A50, Tan64<TanShort<tangent_50_numerator, tangent_50_denominator>>)
KELVM_UNARY(kelsTan_64f_A53, Tan64<TanA53>)

} // namespace kelvm::inline KELVM_BUILD::tan_64f

kelvm::DoubleWord<double> kelvm::tangent_of(double x) {
  const DoubleWord<double> y = tan_64f::long_tangent(tan_64f::fused_reduce_any(abs(x)));
  const DoubleWord<double> sum = fast_two_sum(y.hi, y.lo);
  return {flip_sign(sum.hi, sign_of(x)), flip_sign(sum.lo, sign_of(x))};
}
