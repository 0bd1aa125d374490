// The exponential core, for any width: what every function with an exponential of an open formula shares. (Exp itself
// is prescribed and has its own tables.)
//
//   e^x = 2^(k/N) e^r,   k = round(x N / ln 2),   |r| <= ln 2 / (2N),   N = 128 or 32
//
// 2^(k/N) is a table value, by the low bits of k, and a power of two, by the others, which is added to the exponent
// field. r comes of two steps of ln 2 / N (Cody-Waite), the first of which is exact; with a fused multiply-add the
// second adds its last rounding alone. After Tang, "Table-driven implementation of the exponential function in IEEE
// floating-point arithmetic", 1989.
#pragma once

#include "exact/accuracy.hpp"
#include "exact/fused_sum.hpp"
#include "exact/polynomial.hpp"
#include "exact/scaled_sum.hpp"
#include "exp/exp_core_tables.hpp"
#include "simd/exponent.hpp"
#include "simd/table.hpp"

namespace kelvm::inline KELVM_BUILD {

template <int N> struct ExpSteps;
template <> struct ExpSteps<128> {
  static constexpr int log_n = 7;
  static constexpr double per_step = exp_core_tables::per_step_128;
  static constexpr double hi = exp_core_tables::step_128_hi, lo = exp_core_tables::step_128_lo;
};
template <> struct ExpSteps<32> {
  static constexpr int log_n = 5;
  static constexpr double per_step = exp_core_tables::per_step_32;
  static constexpr double hi = exp_core_tables::step_32_hi, lo = exp_core_tables::step_32_lo;
};

/// x = k ln 2 / N + main - rest: main is exact, rest below 2^-22 for |x| < 2^11. `sum` has k in its low bits.
template <int N, class V> struct ExpReduced {
  V sum, main, rest;

  Int<V> row() const { return int_bits(sum) & (N - 1); }
  /// v times 2^floor(k / N), for a normal v and a normal result.
  V scaled(V v) const { return times_power_of_two(v, bits(sum) >> ExpSteps<N>::log_n); }
  V k() const { return sum - rounding_constant<double>; }
  /// r rounded, and what the rounding lost.
  V r() const { return mul_add(k(), splat<V>(-ExpSteps<N>::lo), main); }
  V r_error() const { return mul_add(k(), splat<V>(-ExpSteps<N>::lo), main - r()); }
  /// r with an error below 2^-52 |x|, from the x that was reduced: k ln 2 / N is rounded.
  V r_by_one_step(V x) const { return mul_add(k(), splat<V>(-(ExpSteps<N>::hi + ExpSteps<N>::lo)), x); }
};

/// |x| < 2^11 for a meaningful result; no flag but inexact is raised for |x| < 2^900.
template <int N, class V> inline ExpReduced<N, V> exp_reduce(V x) {
  const V sum = mul_add(x, splat<V>(ExpSteps<N>::per_step), splat<V>(rounding_constant<double>));
  const V k = sum - rounding_constant<double>;
  return {sum, mul_add(k, splat<V>(-ExpSteps<N>::hi), x), k * ExpSteps<N>::lo};
}

/// 2^(j/128) as a double-word whose upper word has 26 bits.
template <class V> inline DoubleWord<V> exp2_short_and_rest(const ExpReduced<128, V>& x) {
  const Pair<V> t = lookup_pair<exp_core_tables::exp2_short_and_rest_128>(x.row());
  return {t.first, t.second};
}

// Errors of an exponential: `full` within 0.01 ulp before it is rounded; `bits50`, `bits40` and `bits27` with relative
// errors below 2^-52, 2^-42 and 2^-33.

/// The coefficients of (e^r - 1 - r) / r^2, for an error relative to e^r and for one relative to e^r - 1.
template <Accuracy> inline constexpr auto& exp_coefficients = exp_core_tables::exp_full;
template <> inline constexpr auto& exp_coefficients<Accuracy::bits50> = exp_core_tables::exp_bits50;
template <> inline constexpr auto& exp_coefficients<Accuracy::bits40> = exp_core_tables::exp_bits40;
template <> inline constexpr auto& exp_coefficients<Accuracy::bits27> = exp_core_tables::exp_bits27;
template <> inline constexpr auto& exp_coefficients<Accuracy::bits11> = exp_core_tables::float_exp_bits11;
template <Accuracy> inline constexpr auto& expm1_coefficients = exp_core_tables::expm1_full;
template <> inline constexpr auto& expm1_coefficients<Accuracy::bits50> = exp_core_tables::expm1_bits50;
template <> inline constexpr auto& expm1_coefficients<Accuracy::bits40> = exp_core_tables::expm1_bits40;
template <> inline constexpr auto& expm1_coefficients<Accuracy::bits27> = exp_core_tables::expm1_bits27;
template <> inline constexpr auto& expm1_coefficients<Accuracy::bits21> = exp_core_tables::float_expm1_bits21;
template <> inline constexpr auto& expm1_coefficients<Accuracy::bits11> = exp_core_tables::float_expm1_bits11;

/// e^(hi + lo) / 2^floor(k / N) as a double-word, its lower word zero but for `full`; x is hi reduced, |lo| < 2^-7.
template <Accuracy A> inline constexpr int exp_steps = A == Accuracy::full ? 128 : 32;
template <Accuracy A, class V> inline DoubleWord<V> exp_unscaled(const ExpReduced<exp_steps<A>, V>& x, V lo) {
  const V r = x.r() + lo;
  if constexpr (A == Accuracy::full) {
    const V p = mul_add(r * r, estrin(r, exp_coefficients<A>), r);
    const DoubleWord<V> t = exp2_short_and_rest(x);
    return {t.hi, mul_add(t.hi + t.lo, p, t.lo)};
  } else {
    const V t = lookup<exp_core_tables::exp2_32>(x.row());
    return {mul_add(t, mul_add(r * r, estrin(r, exp_coefficients<A>), r), t), V{}};
  }
}
/// e^(hi + lo) where that is a normal number.
template <Accuracy A, class V> inline V exp_normal(V hi, V lo) {
  const ExpReduced<exp_steps<A>, V> x = exp_reduce<exp_steps<A>>(hi);
  const DoubleWord<V> y = exp_unscaled<A>(x, lo);
  if constexpr (A == Accuracy::full)
    return x.scaled(y.hi + y.lo);
  else
    return x.scaled(y.hi);
}

/// e^x where that is a normal number, for the lower accuracies; |x| < 2^7 for bits40.
template <Accuracy A, class V> inline V exp_normal(V x) {
  static_assert(A == Accuracy::bits40 || A == Accuracy::bits27);
  const ExpReduced<32, V> reduced = exp_reduce<32>(x);
  const V r = reduced.r_by_one_step(x);
  const V t = lookup<exp_core_tables::exp2_32>(reduced.row());
  return reduced.scaled(mul_add(t, mul_add(r * r, estrin(r, exp_coefficients<A>), r), t));
}

/// e^(hi + lo) for any sum, |lo| < 2^-20 |hi|, rounded once. An overflow raises its flag, an
/// underflow does not.
template <Accuracy A> inline double exp_any(double hi, double lo) {
  if (hi < -2000) return 0;
  if (hi > 2000) {
    hi = 2000;
    lo = 0;
  }
  const ExpReduced<exp_steps<A>, double> x = exp_reduce<exp_steps<A>>(hi);
  constexpr int below_exponent = ExpSteps<exp_steps<A>>::log_n;
  return ScaledSum{exp_unscaled<A>(x, lo), int(std::int64_t(bits(x.sum) << 13) >> (13 + below_exponent))}.rounded();
}

// --- e^x - 1 -------------------------------------------------------------------------------------------------------

/// e^x - 1 for |x| < 708, as (hi + lo) scale: hi is 2^(k/128) - 1/scale + 2^(k/128) r, rounded, and |lo| < 2^-7 |hi|;
/// relative error below 2^-62. The sum goes up in order of size, and every larger part is exact: 2^(k/128) has a head
/// of 26 bits, and so has r, whose own rounding error is kept.
template <class V> struct Expm1Parts { V hi, lo, scale; };

template <class V> inline Expm1Parts<V> expm1_full(V x) {
  const ExpReduced<128, V> reduced = exp_reduce<128>(x);
  const DoubleWord<V> t = exp2_short_and_rest(reduced);
  const V r = reduced.r();
  const V beyond_r = mul_add(r * r, estrin(r, expm1_coefficients<Accuracy::full>), reduced.r_error());
  const V scale = reduced.scaled(splat<V>(1));
  const DoubleWord<V> constant = two_sum(t.hi, -inverse_power_of_two(scale));
  const V small = mul_add(t.hi + t.lo, beyond_r, t.lo * r);
  if constexpr (has_fused) {
    // With k = 1 the constant is but 1.99 times the product; their difference, mid-binade, is exact all the same.
    const DoubleWord<V> sum = fast_mul_add(t.hi, r, constant.hi);
    return {sum.hi, ((constant.lo + sum.lo) + t.lo) + small, scale};
  } else {
    const V r_head = head_of(r);
    const DoubleWord<V> sum = fast_two_sum(constant.hi, t.hi * r_head);
    return {sum.hi, ((constant.lo + sum.lo) + t.lo) + (t.hi * (r - r_head) + small), scale};
  }
}

/// e^x - 1, |x| < 708; bits50 within 4 ulps, bits40 and bits27 with relative errors below 2^-43 and 2^-34.
template <Accuracy A, class V> inline V exp_minus_1(V x) {
  if constexpr (A == Accuracy::full) {
    const Expm1Parts<V> y = expm1_full(x);
    return (y.hi + y.lo) * y.scale;
  } else if constexpr (A == Accuracy::bits50) {
    const ExpReduced<128, V> reduced = exp_reduce<128>(x);
    const DoubleWord<V> t = exp2_short_and_rest(reduced);
    const V r = reduced.r();
    const V p = mul_add(r * r, estrin(r, expm1_coefficients<A>), r);
    const V scale = reduced.scaled(splat<V>(1));
    return ((t.hi - inverse_power_of_two(scale)) + mul_add(t.hi + t.lo, p, t.lo)) * scale;
  } else {
    const ExpReduced<32, V> reduced = exp_reduce<32>(x);
    const V r = reduced.r_by_one_step(x);
    const V p = mul_add(r * r, estrin(r, expm1_coefficients<A>), r);
    const V t = reduced.scaled(lookup<exp_core_tables::exp2_32>(reduced.row()));
    return mul_add(t, p, t - 1.0);
  }
}

// --- single precision ----------------------------------------------------------------------------------------------

/// x = k ln 2 + r in float arithmetic, |r| <= ln 2 / 2; `sum` has k in its low bits.
template <class V> struct FloatExpReduced {
  V sum, r;
  V scaled(V v) const { return times_power_of_two(v, bits(sum)); }
};
template <class V> inline FloatExpReduced<V> float_exp_reduce(V x) {
  using namespace exp_core_tables;
  const V sum = mul_add(x, splat<V>(float_per_ln2), splat<V>(rounding_constant<float>));
  const V k = sum - rounding_constant<float>;
  return {sum, mul_add(k, splat<V>(-float_ln2_lo), mul_add(k, splat<V>(-float_ln2_hi), x))};
}

/// e^x with a relative error below 2^-12 where that is a normal number.
template <class V> inline V float_exp_bits11(V x) {
  const FloatExpReduced<V> reduced = float_exp_reduce(x);
  const V r = reduced.r;
  return reduced.scaled(1.0f + mul_add(r * r, estrin(r, exp_coefficients<Accuracy::bits11>), r));
}

/// e^x - 1 for |x| <= 87, with relative errors below 2^-21 and 2^-11.
template <Accuracy A, class V> inline V float_exp_minus_1(V x) {
  const FloatExpReduced<V> reduced = float_exp_reduce(x);
  const V r = reduced.r, scale = reduced.scaled(splat<V>(1));
  const V p = mul_add(r * r, estrin(r, expm1_coefficients<A>), r);
  return mul_add(scale, p, scale - 1.0f);
}

} // namespace kelvm::inline KELVM_BUILD
