// Tangent, double; see tangent.hpp for the method. Computed of |x|, so that rounding cannot make it other than odd.
//
//          t = tan r             sum, difference    quotient        error
//   A53    double-word           double-word        double-word     0.53 ulp
//   A50    degree 9              rounded            rounded         2^-51
//   A26    degree 5              rounded            rounded         2^-34
//
// A53: with fused operations 1 - T t is a double-word, and the quotient's remainder is exact. Without them the product
// T t, at most 0.05, is rounded, which costs 0.03 ulp of 1 - T t, and the quotient has 26 bits, so that its product
// with the denominator, taken in two pieces, is exact.
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
  template <class V> static V of(V x) { return rounded(long_tangent(fused_reduce(x))); }
  template <class V> static V of_any(V x) { return rounded(long_tangent(fused_reduce_any(x))); }
};

template <auto& Series> struct TanShort {
  template <class V> static V of(V x) {
    const V shifted = x * thirty_two_over_pi + rounding_constant<double>;
    return short_tangent(remainder(x, shifted - rounding_constant<double>), int_bits(shifted), Series);
  }
  template <class V> static V of_any(V x) {
    const WithinReach<V> within(x);
    const V shifted = within.y * thirty_two_over_pi + rounding_constant<double>;
    return short_tangent(remainder(within.y, shifted - rounding_constant<double>) + within.lo,
                         int_bits(shifted) + within.index, Series);
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
  template <class V> static V formula(V x) { return flip_sign(P::of(abs(x)), sign_of(x)); }
  template <class V> static V wide_formula(V x) { return flip_sign(P::of_any(abs(x)), sign_of(x)); }
  template <class V> static V nan_result(V) { return splat<V>(default_nan<double>()); }
  static double element(double x, kelStatus& status) {
    return is_nan(x) ? nan_result(x) : domain_error<double>(status);
  }
};

} // namespace

KELVM_UNARY(kelsTan_64f_A26, Tan64<TanShort<tangent_2>>)
KELVM_UNARY(kelsTan_64f_A50, Tan64<TanShort<tangent_4>>)
KELVM_UNARY(kelsTan_64f_A53, Tan64<TanA53>)

} // namespace kelvm::inline KELVM_BUILD::tan_64f

kelvm::DoubleWord<double> kelvm::tangent_of(double x) {
  const DoubleWord<double> y = tan_64f::long_tangent(tan_64f::fused_reduce_any(abs(x)));
  const DoubleWord<double> sum = fast_two_sum(y.hi, y.lo);
  return {flip_sign(sum.hi, sign_of(x)), flip_sign(sum.lo, sign_of(x))};
}
