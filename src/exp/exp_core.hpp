// The exponential core, for any width: what every function with an exponential of an open formula shares. (Exp itself
// is prescribed and has its own tables.)
//
//   e^x = 2^(k/32) e^r,   k = round(32 x / ln 2),   |r| <= ln 2 / 64
//
// (or with 128 in place of 32, or 1).
//
// 2^(k/32) is a table value, by the low bits of k, and a power of two, by the others, which is added to the exponent
// field. With AVX-512 a column of the table stands in four registers. r comes of two steps of ln 2 / 32 (Cody-Waite),
// the first of which is exact; with a fused multiply-add the second adds its last rounding alone. After Tang,
// "Table-driven implementation of the exponential function in IEEE floating-point arithmetic", 1989.
#pragma once

#include "exact/accuracy.hpp"
#include "exact/double_word.hpp"
#include "exact/polynomial.hpp"
#include "exact/scaled_sum.hpp"
#include "exp/exp_core_tables.hpp"
#include "simd/exponent.hpp"
#include "simd/table.hpp"

namespace kelvm::inline KELVM_BUILD {

/// x = k ln 2 / N + main - rest, N = 32, 128 or, without a table, 1: main is exact, rest below 2^-22 for |x| < 2^11.
/// `sum` has k in its low bits.
template <class V, int N = 32> struct ExpReduced {
  static_assert(N == 128 || N == 32 || N == 1);
  static constexpr int log_n = N == 128 ? 7 : N == 32 ? 5 : 0;
  static constexpr double step_hi = 32.0 / N * exp_core_tables::step_hi, step_lo = 32.0 / N * exp_core_tables::step_lo;
  V sum, main, rest;

  Int<V> row() const { return int_bits(sum) & (N - 1); }
  /// 2^(k/N), a normal number. One shift takes the bits of k that are a power of two to the exponent field, and the
  /// row to the bits below: the table's values are less by that.
  V power() const {
    static_assert(N == 32);
    return power(lookup<exp_core_tables::exp2_less_row>(LowIndex<Int<V>, log_n>{int_bits(sum)}));
  }
  V power(V less_row) const { return from_bits<V>(bits(less_row) + (bits(sum) << (52 - log_n))); }
  /// v times 2^floor(k / N), for a normal v and a normal result.
  V scaled(V v) const { return times_power_of_two(v, bits(sum) >> log_n); }
  /// floor(k / N), of one lane.
  int exponent() const { return int(std::int64_t(bits(sum) << 13) >> (13 + log_n)); }
  V k() const { return sum - rounding_constant<double>; }
  /// r rounded, and what the rounding lost.
  V r() const { return mul_add(k(), splat<V>(-step_lo), main); }
  V r_error() const { return mul_add(k(), splat<V>(-step_lo), main - r()); }
  /// r with an error below 2^-52 |x|, from the x that was reduced: k ln 2 / N is rounded.
  V r_by_one_step(V x) const { return mul_add(k(), splat<V>(-(step_hi + step_lo)), x); }
};

/// |x| < 2^11 for a meaningful result; no flag but inexact is raised for |x| < 2^900. k is that of `near`, which may
/// differ from x where main may be larger. (Compilers add a negative constant rather than subtract: so this one serves
/// both sums.)
template <int N = 32, class V> inline ExpReduced<V, N> exp_reduce(V x, V near) {
  using Reduced = ExpReduced<V, N>;
  const V sum = mul_sub(near, splat<V>(N * exp_core_tables::per_step / 32), splat<V>(-rounding_constant<double>));
  const V k = sum - rounding_constant<double>;
  return {sum, mul_add(k, splat<V>(-Reduced::step_hi), x), k * Reduced::step_lo};
}
template <int N = 32, class V> inline ExpReduced<V, N> exp_reduce(V x) { return exp_reduce<N>(x, x); }

/// 2^(j/32) as a double-word whose upper word has 26 bits.
template <class V> inline DoubleWord<V> exp2_short_and_rest(const ExpReduced<V>& x) {
  const Pair<V> t = lookup_pair<exp_core_tables::exp2_short_and_rest>(x.row());
  return {t.first, t.second};
}

// Errors of an exponential: `full` within 0.02 ulp before it is rounded; `bits50`, `bits40` and `bits27` with relative
// errors below 2^-52, 2^-42 and 2^-28. The last has no table: a few more terms of the series cost less than a lookup.

/// The coefficients of (e^r - 1 - r) / r^2, |r| <= ln 2 / 64, or of e^r, |r| <= ln 2 / 2.
template <Accuracy> inline constexpr auto& exp_coefficients = exp_core_tables::exp_full;
template <> inline constexpr auto& exp_coefficients<Accuracy::bits50> = exp_core_tables::exp_bits50;
template <> inline constexpr auto& exp_coefficients<Accuracy::bits40> = exp_core_tables::exp_bits40;
template <> inline constexpr auto& exp_coefficients<Accuracy::bits27> = exp_core_tables::exp_bits27;
/// Those of (e^r - 1 - r) / r^2 for an error relative to e^r - 1; bits50 with |r| <= ln 2 / 256.
template <Accuracy> inline constexpr auto& expm1_coefficients = exp_core_tables::expm1_full;
template <> inline constexpr auto& expm1_coefficients<Accuracy::bits50> = exp_core_tables::expm1_bits50;
template <> inline constexpr auto& expm1_coefficients<Accuracy::bits40> = exp_core_tables::expm1_bits40;
template <> inline constexpr auto& expm1_coefficients<Accuracy::bits27> = exp_core_tables::expm1_bits27;
template <> inline constexpr auto& expm1_coefficients<Accuracy::bits21> = exp_core_tables::float_expm1_bits21;
template <> inline constexpr auto& expm1_coefficients<Accuracy::bits11> = exp_core_tables::float_expm1_bits11;

/// e^(hi + lo) 2^(-k/32) - 1; x is hi reduced, hi + lo within 2^-7 of k ln 2 / 32.
template <Accuracy A, class V> inline V exp_of_rest(const ExpReduced<V>& x, V lo) {
  const V r = x.main + mul_add(x.k(), splat<V>(-x.step_lo), lo);
  return mul_add(r * r, estrin(r, exp_coefficients<A>), r);
}
/// e^(hi + lo) / 2^floor(k / 32) as a double-word.
template <class V> inline DoubleWord<V> exp_unscaled(const ExpReduced<V>& x, V lo) {
  const V p = exp_of_rest<Accuracy::full>(x, lo);
  const DoubleWord<V> t = exp2_short_and_rest(x);
  return {t.hi, mul_add(t.hi + t.lo, p, t.lo)};
}
/// e^(hi + lo) where |hi + lo| <= 708, |lo| < 2^-9 |hi|; `near` is their sum, rounded.
template <Accuracy A, class V> inline V exp_normal(V hi, V lo, V near) {
  static_assert(A == Accuracy::full || A == Accuracy::bits50);
  const ExpReduced<V> x = exp_reduce(hi, near);
  if constexpr (A == Accuracy::full) {
    const DoubleWord<V> y = exp_unscaled(x, lo);
    return x.scaled(y.hi + y.lo);
  } else if constexpr (has_fused && !flags_stay) {
    const V t = x.power();
    return mul_add(t, exp_of_rest<A>(x, lo), t);
  } else { // a product with the power may be subnormal where the sum is not, and out of range the power is no number
    const V t = lookup<exp_core_tables::exp2>(x.row());
    return x.scaled(mul_add(t, exp_of_rest<A>(x, lo), t));
  }
}
/// e^x where that is a normal number, for the lower accuracies; |x| < 2^7 for bits40.
template <Accuracy A, class V> inline V exp_normal(V x) {
  if constexpr (A == Accuracy::bits40) {
    const ExpReduced<V> reduced = exp_reduce(x);
    const V r = reduced.r_by_one_step(x);
    const V t = reduced.power();
    return mul_add(t, mul_add(r * r, estrin(r, exp_coefficients<A>), r), t);
  } else {
    const ExpReduced<V, 1> reduced = exp_reduce<1>(x);
    return reduced.scaled(estrin(reduced.r_by_one_step(x), exp_coefficients<A>));
  }
}

/// The same within 2^-33 without a table: where there are fused operations, a long series costs less than a lookup.
template <class V> inline V exp_normal_bits33(V x) {
  const ExpReduced<V, 1> reduced = exp_reduce<1>(x);
  return reduced.scaled(horner(reduced.r_by_one_step(x), exp_core_tables::exp_bits33));
}

/// e^(hi + lo) for any sum, |lo| < 2^-20 |hi|, rounded once. An overflow raises its flag, an
/// underflow does not.
inline double exp_any(double hi, double lo) {
  if (hi < -2000) return 0;
  if (hi > 2000) {
    hi = 2000;
    lo = 0;
  }
  const ExpReduced<double> x = exp_reduce(hi);
  return ScaledSum{exp_unscaled(x, lo), x.exponent()}.rounded();
}

// --- e^x - 1 -------------------------------------------------------------------------------------------------------

/// e^x - 1 for |x| < 708, as (hi + lo) scale: hi is 2^(k/32) - 1/scale + 2^(k/32) r, rounded, and |lo| < 2^-7 |hi|;
/// relative error below 2^-58. The sum goes up in order of size, and every larger part is exact: 2^(k/32) has a head
/// of 26 bits, and so has r, whose own rounding error is kept.
template <class V> struct Expm1Parts { V hi, lo, scale; };

template <Arguments A = Arguments::any, class V> inline Expm1Parts<V> expm1_full(V x) {
  const ExpReduced<V> reduced = exp_reduce(x);
  const DoubleWord<V> t = exp2_short_and_rest(reduced);
  const V r = reduced.r();
  const V beyond_r = mul_add(r * r, estrin(r, expm1_coefficients<Accuracy::full>), reduced.r_error());
  const V scale = reduced.scaled(splat<V>(1));
  const V minus_one = -inverse_power_of_two(scale);
  const DoubleWord<V> constant =
      A == Arguments::positive ? fast_two_sum(t.hi, minus_one) : two_sum(t.hi, minus_one); // scale >= 1
  const V small = mul_add(t.hi + t.lo, beyond_r, t.lo * r);
  if constexpr (has_fused) {
    // With k = 1 the constant is but 1.98 times the product; their difference, mid-binade, is exact all the same.
    const DoubleWord<V> sum = fast_mul_add(t.hi, r, constant.hi);
    return {sum.hi, ((constant.lo + sum.lo) + t.lo) + small, scale};
  } else {
    const V r_head = head_of(r);
    const DoubleWord<V> sum = fast_two_sum(constant.hi, t.hi * r_head);
    return {sum.hi, ((constant.lo + sum.lo) + t.lo) + (t.hi * (r - r_head) + small), scale};
  }
}

/// e^r = 1 + square even + odd, |r| <= ln 2 / 2, by its even and odd part: cosh r - 1 with an absolute error below
/// 2^-56, sinh r = odd within an ulp. Where steps are fused, these ten terms, two short chains, cost less than a lookup
/// and the shorter series behind it.
template <class V> struct EvenAndOddExp {
  V square, even, odd;
  explicit EvenAndOddExp(V r) : square(r * r), even(horner(square, exp_core_tables::exp_even)) {
    odd = mul_add(r * square, horner(square, exp_core_tables::exp_odd), r);
  }
};

/// e^x - 1, |x| < 708; bits50 within 4 ulps, bits40 and bits27 with relative errors below 2^-43 and 2^-34.
template <Accuracy A, Arguments X = Arguments::any, class V> inline V exp_minus_1(V x) {
  if constexpr (A == Accuracy::full) {
    const Expm1Parts<V> y = expm1_full(x);
    return (y.hi + y.lo) * y.scale;
  } else if constexpr (A == Accuracy::bits50 && has_fused) {
    const ExpReduced<V, 1> reduced = exp_reduce<1>(x);
    const EvenAndOddExp<V> e(reduced.r());
    const V scale = reduced.scaled(splat<V>(1));
    return mul_add(scale, mul_add(e.square, e.even, e.odd), scale - 1.0);
  } else if constexpr (A == Accuracy::bits50) {
    const ExpReduced<V, 128> reduced = exp_reduce<128>(x); // whose longer table saves a term
    const Pair<V> row = lookup_pair<exp_core_tables::exp2_less_row_and_rest>(reduced.row());
    V t = reduced.power(row.first);
    if constexpr (X == Arguments::any) t = larger_of(t, splat<V>(0x1p-200)); // the product stays a normal number
    const V r = reduced.r();
    const V p = mul_add(r * r, estrin(r, expm1_coefficients<A>), r + row.second);
    return mul_add(t, p, t - 1.0);
  } else {
    const ExpReduced<V> reduced = exp_reduce(x);
    const V r = reduced.r_by_one_step(x);
    const V p = mul_add(r * r, estrin(r, expm1_coefficients<A>), r);
    const V t = reduced.power();
    return mul_add(t, p, t - 1.0);
  }
}

// --- single precision ----------------------------------------------------------------------------------------------

/// The low words of doubles as floats: what a sum with rounding_constant<double> has in its low bits.
inline float low_words(double x) { return from_bits<float>(std::uint32_t(bits(x))); }
inline Native<float> low_words(Native<double> low, Native<double> high) {
  return deinterleave(bit_cast<Native<float>>(low), bit_cast<Native<float>>(high)).first;
}

/// x = k ln 2 + r in float arithmetic, |r| <= ln 2 / 2; `sum` has k in its low bits.
template <class V> struct FloatExpReduced {
  V sum, r;
  V scaled(V v) const { return times_power_of_two(v, bits(sum)); }
};
template <class V> inline FloatExpReduced<V> float_exp_reduce(V x) {
  using namespace exp_core_tables;
  const V sum = mul_sub(x, splat<V>(float_per_ln2), splat<V>(-rounding_constant<float>));
  const V k = sum - rounding_constant<float>;
  return {sum, mul_add(k, splat<V>(-float_ln2_lo), mul_add(k, splat<V>(-float_ln2_hi), x))};
}

/// The same of doubles, reduced before they are rounded.
inline FloatExpReduced<float> float_exp_reduce(double x) {
  const auto reduced = exp_reduce<1>(x);
  return {low_words(reduced.sum), float(reduced.r_by_one_step(x))};
}
inline FloatExpReduced<Native<float>> float_exp_reduce(Native<double> low, Native<double> high) {
  const auto lower = exp_reduce<1>(low), upper = exp_reduce<1>(high);
  return {low_words(lower.sum, upper.sum), narrow(lower.r_by_one_step(low), upper.r_by_one_step(high))};
}

/// e^x where that is a normal number: with float_exp_bits21 for the series within 2^-22.5, with float_exp_bits11 2^-12.
template <auto& Series, class V> inline V float_exp(const FloatExpReduced<V>& x) {
  return x.scaled(1.0f + mul_add(x.r * x.r, estrin(x.r, Series), x.r));
}
template <class V> inline V float_exp_bits11(V x) {
  return float_exp<exp_core_tables::float_exp_bits11>(float_exp_reduce(x));
}

/// x as a multiple of 2^-23, rounded, for |x| < 2^8: what a sum with a power of two has in its low bits.
inline std::int32_t fixed_point(double x) { return int_bits(low_words(x + 0x1.8p29)); }
inline Int<Native<float>> fixed_point(Native<double> low, Native<double> high) {
  return int_bits(low_words(low + 0x1.8p29, high + 0x1.8p29));
}
/// 2^(n 2^-23) where that is a normal number, within 2^-22.5. Only inexact is raised, whatever n: the fraction is an
/// integer here, and no product of small numbers comes up.
template <class I> inline auto float_exp2_of_fixed_point(I n) {
  using V = Floating<I>;
  const I fraction = bit_cast<I>(bit_cast<Bits<V>>(n) << 9) >> 9;
  const V f = convert<V>(fraction);
  const V power = mul_add(f, estrin(f, exp_core_tables::float_exp2_bits21), splat<V>(1));
  return from_bits<V>(bits(power) + (bit_cast<Bits<V>>(n) - bit_cast<Bits<V>>(fraction))); // wraps for any n
}

/// e^x - 1 for |x| <= 87, with relative errors below 2^-21 and 2^-11.
template <Accuracy A, class V> inline V float_exp_minus_1(V x) {
  const FloatExpReduced<V> reduced = float_exp_reduce(x);
  const V r = reduced.r, scale = reduced.scaled(splat<V>(1));
  const V p = mul_add(r * r, estrin(r, expm1_coefficients<A>), r);
  return mul_add(scale, p, scale - 1.0f);
}

} // namespace kelvm::inline KELVM_BUILD
