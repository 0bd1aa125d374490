// What sinh, cosh and, of x + iy, Exp, Sinh, Cosh, Tanh and their rotations Sin, Cos, Tan are made of: an exponential,
// a hyperbolic cosine and sine of x, a cosine and sine of y, and their products, at every accuracy. An accuracy P has
//
//   Arithmetic                          the type it computes in
//   vectors_in_flight                   as in KernelDefaults
//   Factor<V>                           a number with what it knows beyond V
//   Exponential<V> exponential(V x)     of |x| <= largest_exponent, with a function times(Factor<V>)
//   EvenOdd<Factor<V>> hyperbolic(V x)  cosh x and sinh x, 0 <= x <= largest_exponent
//   EvenOdd<Factor<V>> circular<A>(V y) cos y and sin y, 0 <= y <= last_angle; with A = Angles::any any finite y >= 0,
//                                       where has_any_angle says so; elsewhere ShortA26 takes the larger ones
//   V product(Factor<V>, Factor<V>)
//   SumOfSquares<V>(Factor<V>, Factor<V>)   with functions that divide a product of two factors by it
//
// Both pairs come from an addition theorem, a from a table and r small:
//   odd(a + r) = odd a + even a odd r + odd a (even r - 1),   even(a + r) = even a +- odd a odd r + even a (even r - 1)
// for sin and cos with a = k pi/32 (with fused operations, where the factors are short, a = k pi/2 and longer series
// cost less than a lookup), for sinh and cosh with a = k ln 2 / 32, where cosh a +- sinh a = 2^(+-k/32). Next to a zero
// of the function a is that zero, and the result as accurate as r.
#pragma once

#include "exact/polynomial.hpp"
#include "exact/scaled_sum.hpp"
#include "exp/exp_core.hpp"
#include "hyperbolic/factors_tables.hpp"
#include "trig/sine_cosine.hpp"

namespace kelvm::inline KELVM_BUILD {

/// cos and sin, or cosh and sinh.
template <class F> struct EvenOdd { F even, odd; };
enum class Functions { circular, hyperbolic };
/// sum +- a b, the sign that of the addition theorem of the even function.
template <Functions Which, class V> inline V add_signed(V sum, V a, V b) {
  return Which == Functions::circular ? sub_mul(sum, a, b) : mul_add(a, b, sum);
}

// --- accuracies -----------------------------------------------------------------------------------------------------

/// Angles up to last_angle, or any.
enum class Angles { near, any };

/// What the accuracies in double share.
struct InDouble {
  using Arithmetic = double;
  static constexpr int vectors_in_flight = 2;
  static constexpr bool has_any_angle = true;
  static constexpr double last_angle = 0x1.5ffffffffffffp+16; // below 90112
  static constexpr double largest_exponent = 708;

  /// 2^(k/32) / 2 and 2^(-k/32) / 2, each as a head of 26 bits and the rest; k from exp_reduce of an x >= 0.
  template <class V> struct HalfPowers {
    DoubleWord<V> up, down;
    explicit HalfPowers(const ExpReduced<V>& x) : up(half_power(x)), down(half_power(opposite(x))) {}

  private:
    static DoubleWord<V> half_power(const ExpReduced<V>& x) {
      const DoubleWord<V> power = exp2_short_and_rest(x);
      const V scale = x.scaled(splat<V>(0.5));
      return {power.hi * scale, power.lo * scale};
    }
  };
  /// k with its sign changed. (The sum is 1.5 2^52 + k.)
  template <class V> static ExpReduced<V> opposite(const ExpReduced<V>& x) { return {0x1.8p53 - x.sum, V{}, V{}}; }
};

/// Heads and rests throughout, one rounding at the end: 0.52 ulp.
struct Full : InDouble {
  static constexpr bool splits = true;            // products of tiny factors lose bits below the range
  static constexpr double largest_exponent = 650; // no product with a cosine or sine is subnormal but a negligible one

  /// The head is exact.
  template <class V> static DoubleWord<V> long_product(const DoubleWord<V>& a, const DoubleWord<V>& b) {
    return {a.hi * b.hi, mul_add(a.hi, b.lo, a.lo * (b.hi + b.lo))};
  }
  template <class V> static V product(const DoubleWord<V>& a, const DoubleWord<V>& b) {
    return mul_add(a.hi, b.hi, mul_add(a.hi, b.lo, a.lo * (b.hi + b.lo)));
  }
  /// c^2 + d^2, as a divisor. A quotient's head has 26 bits, so that its product with the head of the sum is exact.
  template <class V> struct SumOfSquares {
    DoubleWord<V> value;
    V inverse;

    SumOfSquares(const DoubleWord<V>& c, const DoubleWord<V>& d) {
      const DoubleWord<V> cc = long_product(c, c), dd = long_product(d, d);
      const DoubleWord<V> total = two_sum(cc.hi, dd.hi);
      value.hi = head_of(total.hi);
      value.lo = (total.hi - value.hi) + (total.lo + (cc.lo + dd.lo));
      inverse = 1.0 / (value.hi + value.lo);
    }
    /// a b / (c^2 + d^2)
    V divides(const DoubleWord<V>& a, const DoubleWord<V>& b) const {
      const DoubleWord<V> ab = long_product(a, b);
      const V quotient = head_of((ab.hi + ab.lo) * inverse);
      return mul_add(sub_mul(ab.hi, quotient, value.hi) + sub_mul(ab.lo, quotient, value.lo), inverse, quotient);
    }
  };

  template <class V> struct Exponential {
    DoubleWord<V> value;
    V scale;
    V times(const DoubleWord<V>& factor) const { return product(value, factor) * scale; }
  };
  template <class V> static Exponential<V> exponential(V x) {
    const ExpReduced<V> reduced = exp_reduce(x);
    return {exp_unscaled(reduced, V{}), reduced.scaled(splat<V>(1))};
  }

  template <class V> static EvenOdd<DoubleWord<V>> hyperbolic(V x) {
    const ExpReduced<V> reduced = exp_reduce(x);
    const HalfPowers<V> power(reduced);
    const V r = reduced.main - reduced.rest, r_tail = (reduced.main - r) - reduced.rest;
    const DoubleWord<V> cosh_a = sum(power.up.hi, power.down.hi, power.up.lo + power.down.lo);
    const DoubleWord<V> sinh_a = sum(power.up.hi, -power.down.hi, power.up.lo - power.down.lo);
    return added<Functions::hyperbolic>({cosh_a, sinh_a}, DoubleWord<V>{r, r_tail}, factors_tables::cosh_full,
                                        factors_tables::sinh_full);
  }

  template <Angles A = Angles::near, class V> static EvenOdd<DoubleWord<V>> circular(V y) {
    if constexpr (A == Angles::near) {
      return circular(long_reduce(y));
    } else {
      const WithinReach<V> within(y);
      const Remainder<V> r = long_reduce(within.y);
      return circular(Remainder<V>{r.hi, r.lo + within.lo, r.index + within.index});
    }
  }
  template <class V> static EvenOdd<DoubleWord<V>> circular(const Remainder<V>& r) {
    const auto [sin_head, sin_rest, cos_head, cos_rest] = lookup_row<factors_tables::sine_cosine>(r.index & 63);
    return added<Functions::circular>({DoubleWord<V>{cos_head, cos_rest}, DoubleWord<V>{sin_head, sin_rest}},
                                      DoubleWord<V>{r.hi, r.lo}, factors_tables::cos_full, factors_tables::sin_full);
  }
  /// y = index pi/32 + hi + lo, |hi| <= pi/64, for |y| < 2^17; the error is below 2^-120, which matters where y
  /// is a multiple of pi/2 but for 2^-53.
  template <class V> static Remainder<V> long_reduce(V y) {
    using namespace factors_tables;
    const V shifted = mul_add(y, splat<V>(thirty_two_over_pi), splat<V>(rounding_constant<double>));
    const V k = shifted - rounding_constant<double>;
    const V t = sub_mul(y, k, splat<V>(pi_32_0));
    const V first = sub_mul(t, k, splat<V>(pi_32_1));
    const V second = sub_mul(sub_mul(t - first, k, splat<V>(pi_32_1)), k, splat<V>(pi_32_2));
    const V head = first + second;
    return {head, sub_mul((first - head) + second, k, splat<V>(pi_32_3)), int_bits(shifted)};
  }

private:
  /// a + b + rest, |rest| far below: the upper 26 bits of a + b, and exactly what is left of it, with the rest.
  template <class V> static DoubleWord<V> sum(V a, V b, V rest) {
    const V head = head_of(a + b);
    return {head, ((a - head) + b) + rest};
  }
  /// a +- b c + rest likewise, where the product is exact.
  template <Functions Which, class V> static DoubleWord<V> sum_with_product(V a, V b, V c, V rest) {
    const V head = head_of(add_signed<Which>(a, b, c));
    return {head, add_signed<Which>(a - head, b, c) + rest};
  }
  /// The addition theorem: with odd r = head + beyond, where head has 26 bits, the products with head are exact.
  template <Functions Which, class V, int N, int M>
  static EvenOdd<DoubleWord<V>> added(const EvenOdd<DoubleWord<V>>& a, DoubleWord<V> r, const double (&even_series)[N],
                                      const double (&odd_series)[M]) {
    const V z = r.hi * r.hi, head = head_of(r.hi);
    const V beyond = mul_add(r.hi * z, horner(z, odd_series), (r.hi - head) + r.lo);
    const V c = z * horner(z, even_series);
    const V even = a.even.hi + a.even.lo, odd = a.odd.hi + a.odd.lo;
    return {sum_with_product<Which>(a.even.hi, a.odd.hi, head,
                                    add_signed<Which>(a.even.lo, a.odd.lo, head) +
                                        add_signed<Which>(even * c, odd, beyond)),
            sum_with_product<Functions::hyperbolic>(
                a.odd.hi, a.even.hi, head, mul_add(a.even.lo, head, a.odd.lo) + mul_add(even, beyond, odd * c))};
  }
};

/// The addition theorem in plain numbers: c = even r - 1.
template <Functions Which, class V> inline EvenOdd<V> added(const EvenOdd<V>& a, V c, V odd_r) {
  return {a.even + add_signed<Which>(a.even * c, a.odd, odd_r), a.odd + mul_add(a.even, odd_r, a.odd * c)};
}
template <class V, int N, int M>
inline EvenOdd<V> even_odd(V r, const Lane<V> (&even_series)[N], const Lane<V> (&odd_series)[M]) {
  const V z = r * r;
  return {z * horner(z, even_series), mul_add(r * z, horner(z, odd_series), r)}; // even less 1
}

/// cos and sin of k pi/2 + r from those of r, k by its low bits.
template <class V> inline EvenOdd<V> turned_by_quarters(const EvenOdd<V>& r, Bits<V> k) {
  constexpr int sign = 8 * sizeof(Lane<V>) - 1;
  const SignMask<V> odd = bit_cast<SignMask<V>>(k << sign);
  return {flip_sign(select(odd, r.odd, r.even), ((k + 1) << (sign - 1)) & sign_bit<V>),
          flip_sign(select(odd, r.even, r.odd), (k << (sign - 1)) & sign_bit<V>)};
}

/// Where a factor is a plain number.
struct Plain {
  static constexpr bool splits = false;

  template <class V> static V product(V a, V b) { return a * b; }
  template <class V> struct SumOfSquares {
    V inverse;
    SumOfSquares(V c, V d) : inverse(Lane<V>(1) / mul_add(c, c, d * d)) {}
    V divides(V a, V b) const { return (a * b) * inverse; }
  };
  template <class V> struct Exponential {
    V value;
    V times(V factor) const { return value * factor; }
  };
};

/// In double, an exponential of accuracy E, the same angles as above with the coefficients of P.
template <Accuracy E, class P> struct Rounded : Plain, InDouble {
  template <class V> static Exponential<V> exponential(V x) {
    if constexpr (E == Accuracy::bits50)
      return {exp_normal<E>(x, V{}, x)};
    else if constexpr (E == Accuracy::bits33 && has_fused)
      return {exp_normal_bits33(x)};
    else if constexpr (E == Accuracy::bits33)
      return {exp_normal<Accuracy::bits40>(x)};
    else
      return {exp_normal<E>(x)};
  }
  template <class V> static EvenOdd<V> hyperbolic(V x) {
    const ExpReduced<V> reduced = exp_reduce(x);
    const EvenOdd<V> r = even_odd(reduced.main - reduced.rest, P::cosh, P::sinh);
    if constexpr (P::has_rests) { // of the powers: sinh a by cancellation
      const HalfPowers<V> power(reduced);
      const EvenOdd<V> a{power.up.hi + (power.down.hi + (power.up.lo + power.down.lo)),
                         (power.up.hi - power.down.hi) + (power.up.lo - power.down.lo)};
      return added<Functions::hyperbolic>(a, r.even, r.odd);
    } else {
      const auto half_power = [](const ExpReduced<V>& x) {
        return times_power_of_two(x.power(), ~Bits<V>{}); // half of it
      };
      const V up = half_power(reduced), down = half_power(opposite(reduced));
      return added<Functions::hyperbolic>({up + down, up - down}, r.even, r.odd);
    }
  }
  template <Angles A = Angles::near, class V> static EvenOdd<V> circular(V y) {
    if constexpr (A == Angles::near) {
      return of_angle(reduced_angle(y));
    } else {
      const WithinReach<V> within(y);
      const Angle<V> near = reduced_angle(within.y);
      return of_angle(Angle<V>{near.r + within.lo, near.index + (tabulated ? within.index : within.index >> 4)});
    }
  }

private:
  static constexpr bool tabulated = P::has_rests || !has_fused;
  /// r + index pi/32, or r + index pi/2 where there is no table.
  template <class V> struct Angle {
    V r;
    Int<V> index;
  };
  template <class V> static Angle<V> reduced_angle(V y) {
    constexpr double steps = tabulated ? 1 : 16; // of pi/32
    const V shifted = mul_add(y, splat<V>(thirty_two_over_pi / steps), splat<V>(rounding_constant<double>));
    const V k = shifted - rounding_constant<double>;
    const auto less = [&](V t, double part) { return sub_mul(t, k, splat<V>(steps * part)); };
    if constexpr (E == Accuracy::bits33) // 2^-71 absolute: floats do not come near multiples of pi / 2
      return {less(less(y, factors_tables::pi_32_0), factors_tables::pi_32_1 + factors_tables::pi_32_2),
              int_bits(shifted)};
    else
      return {less(less(less(y, parts_of_pi_32[0]), parts_of_pi_32[1]), parts_of_pi_32[2]), int_bits(shifted)};
  }
  template <class V> static EvenOdd<V> of_angle(const Angle<V>& angle) {
    if constexpr (tabulated) {
      const EvenOdd<V> r = even_odd(angle.r, P::cos, P::sin);
      const auto [cos_a, sin_a] = lookup_pair<cosine_sine>(angle.index & 63);
      return added<Functions::circular>({cos_a, sin_a}, r.even, r.odd);
    } else {
      const V z = angle.r * angle.r;
      return turned_by_quarters(EvenOdd<V>{mul_add(z, horner(z, factors_tables::cos_whole), splat<V>(1)),
                                           mul_add(angle.r * z, horner(z, factors_tables::sin_whole), angle.r)},
                                bit_cast<Bits<V>>(angle.index));
    }
  }
};
struct LongSeries {
  static constexpr bool has_rests = true;
  static constexpr const auto& sin = factors_tables::sin_full;
  static constexpr const auto& cos = factors_tables::cos_full;
  static constexpr const auto& sinh = factors_tables::sinh_full;
  static constexpr const auto& cosh = factors_tables::cosh_full;
};
struct ShortSeries {
  static constexpr bool has_rests = false;
  static constexpr const auto& sin = factors_tables::sin_short;
  static constexpr const auto& cos = factors_tables::cos_short;
  static constexpr const auto& sinh = factors_tables::sinh_short;
  static constexpr const auto& cosh = factors_tables::cosh_short;
};
/// A factor within an ulp or two.
using Middle = Rounded<Accuracy::bits50, LongSeries>;
/// Factors to 2^-33 or better; with a table, without fused operations, the exponential to 2^-42 and angles to 2^-40 for
/// results that are rounded to float. The exponential to 2^-28 for A26.
using ShortA24 = Rounded<Accuracy::bits33, ShortSeries>;
using ShortA26 = Rounded<Accuracy::bits27, ShortSeries>;

/// In float, angles reduced by pi/2, exponents by ln 2. What is subtracted first is exact, so that relative errors stay
/// small next to the zeros.
template <class P> struct Single : Plain {
  using Arithmetic = float;
  static constexpr int vectors_in_flight = 4;
  static constexpr bool has_any_angle = false;
  static constexpr float largest_exponent = 87, last_angle = 10000;

  template <class V> static Exponential<V> exponential(V x) { return exponential(float_exp_reduce(x)); }
  template <class V> static Exponential<V> exponential(const FloatExpReduced<V>& reduced) {
    return {float_exp<P::exponential>(reduced)};
  }
  template <class V> static EvenOdd<V> hyperbolic(V x) {
    const FloatExpReduced<V> reduced = float_exp_reduce(x);
    const V up = reduced.scaled(splat<V>(0.5f)), down = from_bits<V>(0x7E000000u - bits(up));
    const EvenOdd<V> r = even_odd(reduced.r, P::cosh, P::sinh);
    return added<Functions::hyperbolic>({up + down, up - down}, r.even, r.odd);
  }
  template <Angles = Angles::near, class V> static EvenOdd<V> circular(V y) {
    const V shifted = mul_add(y, splat<V>(0x1.45f306p-1f), splat<V>(rounding_constant<float>));
    const V k = shifted - rounding_constant<float>;
    const V t = sub_mul(sub_mul(y, k, splat<V>(1.5703125f)), k, splat<V>(0x1.fb4p-12f));
    return circular(shifted, sub_mul(sub_mul(t, k, splat<V>(0x1.444p-24f)), k, splat<V>(0x1.68c234p-39f)));
  }
  /// Of an angle k pi/2 + remainder, any k: its low bits are those of `shifted`.
  template <class V> static EvenOdd<V> circular(V shifted, V remainder) {
    const EvenOdd<V> r = even_odd(remainder, P::cos, P::sin);
    return turned_by_quarters(EvenOdd<V>{1.0f + r.even, r.odd}, bits(shifted));
  }
};
struct SeriesA21 {
  static constexpr const auto& sin = factors_tables::sin_single_bits21;
  static constexpr const auto& cos = factors_tables::cos_single_bits21;
  static constexpr const auto& sinh = factors_tables::sinh_single_bits21;
  static constexpr const auto& cosh = factors_tables::cosh_single_bits21;
  static constexpr const auto& exponential = exp_core_tables::float_exp_bits21;
};
struct SeriesA11 {
  static constexpr const auto& sin = factors_tables::sin_single_bits11;
  static constexpr const auto& cos = factors_tables::cos_single_bits11;
  static constexpr const auto& sinh = factors_tables::sinh_single_bits11;
  static constexpr const auto& cosh = factors_tables::cosh_single_bits11;
  static constexpr const auto& exponential = exp_core_tables::float_exp_bits11;
};
using SingleA21 = Single<SeriesA21>;
using SingleA11 = Single<SeriesA11>;

// --- one element, any operands --------------------------------------------------------------------------------------

/// Factors to about 2^-58 with their power of two apart, any x or y. Zero, infinite or NaN by their heads. The circular
/// factors of infinities and NaNs are NaNs, odd functions keep the sign of a NaN.
ScaledSum any_exponential(double x);
EvenOdd<ScaledSum> any_hyperbolic(double x);
EvenOdd<ScaledSum> any_circular(double y);

} // namespace kelvm::inline KELVM_BUILD
