// The arc tangent core, for any width: the angle of a point, which every inverse circular function needs.
//
// The angle of (x, y), x >= 0, y >= 0, is that of a table point (1, c) with c near y/x, and the angle between the two:
//
//   atan(y/x) = atan c + atan r,   r = (y - c x) / (x + c y)
//
// c is y/x rounded to few bits, so that y - c x is a double: one fused operation, or c x exact in two parts.
// For small angles c is 0 and r the quotient itself; c stops at 15.75 or 32, as r goes to 1/c where y/x goes to
// infinity. atan r is an odd polynomial. After Tang, "Table-lookup algorithms for elementary functions and their error
// analysis", 1991. Three tables:
//
//   long     642 rows, c = 0 and 64 an octave from 1/32 on: |r| < 1/32, and below 2^-7 of the angle but for c = 0.
//            atan c has a double-word.
//   short    64 rows, few enough for registers: c a multiple of 1/4, |r| < 1/8. atan c is rounded.
//   even     64 rows of which the arc tangent of one number makes more: c a multiple of 1/8 and |r| < 1/16; c stops at
//            63/8, from where on an error of atan r is small next to the result. Without fused operations 256 rows to
//            255/16 for bits50: a shorter series, and a table does not stand in registers anyway.
//
// Other quadrants: |y| and |x| take part, x < 0 turns the angle t into pi - t, and the sign of y is that of the result.
#pragma once

#include "exact/accuracy.hpp"
#include "exact/double_word.hpp"
#include "exact/polynomial.hpp"
#include "simd/table.hpp"
#include "trig/inverse_trig_tables.hpp"

namespace kelvm::inline KELVM_BUILD {

// Relative errors of an angle in double arithmetic. As double-word: `extended` below 2^-68.9, `full` below 2^-56.5. As
// one double: `bits50`, `bits49`, `bits40` and `bits27` below 2^-50.5, 2^-49.5, 2^-41 and 2^-33.

/// c near q and its row.
template <class V> struct AngleRow {
  V c;
  Int<V> row;
};
struct LongAngleRows {
  static constexpr double largest = 32;

  /// 0 <= q <= largest.
  template <class V> static AngleRow<V> at(V q) {
    constexpr int shift = 52 - 6;                                   // 64 rows an octave,
    constexpr std::uint64_t half = std::uint64_t(1) << (shift - 1); // centred
    constexpr std::uint64_t lowest = 0x3FA0000000000000;            // 1/32
    const auto tabulated = q >= splat<V>(__builtin_bit_cast(double, lowest - half));
    const Bits<V> centred = bits(q) + half;
    return {zero_unless(tabulated, from_bits<V>(centred & ~(2 * half - 1))),
            bit_cast<Int<V>>(zero_unless(tabulated, from_bits<V>((centred >> shift) - ((lowest >> shift) - 1))))};
  }
};
struct ShortAngleRows {
  static constexpr double largest = 15.75;

  template <class V> static AngleRow<V> at(V q) {
    const V shifted = q + 0x1.8p50; // rounds to a multiple of 1/4
    return {shifted - 0x1.8p50, int_bits(shifted) & 63};
  }
};

namespace detail {
/// c for a point of the first quadrant, (0, 0) excluded. x may be 0: the quotient is bounded before it is taken.
template <class Rows, class V> inline AngleRow<V> bounded_angle_row(V y, V x) {
  return Rows::at(y / larger_of(y * (1 / Rows::largest), x));
}

/// c v exactly, where c has few bits: rounded and the rest, or of v's upper and lower bits.
template <class V> inline DoubleWord<V> row_product(V c, V v) {
  if constexpr (has_fused) {
    const V product = c * v;
    return {product, mul_sub(c, v, product)};
  } else {
    const V upper = from_bits<V>(bits(v) & ~std::uint64_t(0xFF));
    return {c * upper, c * (v - upper)};
  }
}

/// atan r - r over r z, z = r^2.
template <Accuracy A, class V> inline V atan_series(V z) {
  if constexpr (A == Accuracy::full)
    return estrin(z, inverse_trig::atan_full);
  else if constexpr (A == Accuracy::bits50)
    return estrin(z, inverse_trig::atan_bits50);
  else if constexpr (A == Accuracy::bits49)
    return estrin(z, inverse_trig::atan_bits49);
  else if constexpr (A == Accuracy::bits40)
    return estrin(z, inverse_trig::atan_bits40);
  else
    return estrin(z, inverse_trig::atan_bits27);
}

/// The angle of a point of the first quadrant. Without `Tails` those of y and x are 0.
template <Accuracy A, bool Tails, class V> inline DoubleWord<V> first_quadrant_angle(DoubleWord<V> y, DoubleWord<V> x) {
  const auto [c, row] = bounded_angle_row<LongAngleRows>(y.hi, x.hi);
  const auto [table, table_tail] = lookup_pair<inverse_trig::atan_long_rows>(row);

  // The products with c are exact, and so is the difference but for y/x beyond the table.
  DoubleWord<V> numerator, denominator;
  if constexpr (A == Accuracy::extended) {
    const DoubleWord<V> cx = row_product(c, x.hi), cy = row_product(c, y.hi);
    const DoubleWord<V> difference = fast_two_sum(y.hi, -cx.hi);
    numerator = two_sum(difference.hi, -cx.lo);
    numerator.lo += difference.lo;
    denominator = two_sum(x.hi, cy.hi);
    denominator.lo += cy.lo;
    if constexpr (Tails) {
      numerator.lo += sub_mul(y.lo, c, x.lo);
      denominator.lo += mul_add(c, y.lo, x.lo);
    }
  } else {
    if constexpr (has_fused) {
      numerator.hi = sub_mul(y.hi, c, x.hi);
    } else {
      const DoubleWord<V> cx = row_product(c, x.hi);
      numerator.hi = (y.hi - cx.hi) - cx.lo;
    }
    numerator.lo = sub_mul(y.lo, c, x.lo);
    denominator = {mul_add(c, y.hi, x.hi), x.lo};
  }

  // r and a tail; in the longer form the square of r is exact
  const V reciprocal = 1.0 / denominator.hi;
  constexpr bool is_short = !has_fused || A == Accuracy::extended;
  auto [r, rest] = divide<is_short>(numerator.hi, denominator.hi, reciprocal);
  if constexpr (Tails || A == Accuracy::extended) rest += sub_mul(numerator.lo, r, denominator.lo);
  const V r_tail = rest * reciprocal, r_sum = r + r_tail;

  const DoubleWord<V> sum = fast_two_sum(table, r);
  if constexpr (A == Accuracy::extended) {
    // atan r = r - r (z/3 - z^2 P(z)), z = r^2; the head of r z/3 is exact
    const V z_head = r * r, z_tail = (r + r_sum) * r_tail, z = z_head + z_tail;
    const V third = head_of(z * 0x1.5555555555555p-2);
    const V third_tail = (sub_mul(z_head, splat<V>(3), third) + z_tail) * 0x1.5555555555555p-2;
    const DoubleWord<V> head = fast_two_sum(sum.hi, -(r * third));
    const V cubic = mul_add(r_sum, sub_mul(third_tail, z * z, estrin(z, inverse_trig::atan_extended)), r_tail * third);
    return {head.hi, (sum.lo + head.lo) + (table_tail + (r_tail - cubic))};
  } else {
    const V z = r_sum * r_sum;
    return {sum.hi, (sum.lo + table_tail) + mul_add(r_sum * z, atan_series<A>(z), r_tail)};
  }
}

/// The first quadrant's angle t of (|x|, |y|) brought to that of (x, y): `left` has the lanes of negative x.
template <bool Tails, Accuracy A, class V> inline DoubleWord<V> angle_double_word(DoubleWord<V> y, DoubleWord<V> x) {
  const Bits<V> up = sign_of(y.hi);
  const auto left = x.hi < V{};
  const Bits<V> turn = sign_of(zero_unless(left, x.hi));
  const DoubleWord<V> t = first_quadrant_angle<A, Tails>(DoubleWord<V>{flip_sign(y.hi, up), flip_sign(y.lo, up)},
                                                         DoubleWord<V>{abs(x.hi), flip_sign(x.lo, turn)});
  const DoubleWord<V> sum = fast_two_sum(zero_unless(left, splat<V>(pi_hi)), flip_sign(t.hi, turn));
  const V tail = sum.lo + (zero_unless(left, splat<V>(pi_lo)) + flip_sign(t.lo, turn));
  return {flip_sign(sum.hi, up), flip_sign(tail, up)};
}

/// The arc tangent of t, 0 <= t < 2^1000, by a table of the multiples of 1/PerUnit.
template <int PerUnit, const auto& Table, class V, int N> inline V arc_tangent_by_rows(V t, const double (&series)[N]) {
  constexpr double largest = double(std::size(Table) - 1) / PerUnit, to_multiple = 0x1.8p52 / PerUnit;
  const V shifted = smaller_of(t, splat<V>(largest)) + to_multiple;
  const V c = shifted - to_multiple;
  const V r = (t - c) / mul_add(c, t, splat<V>(1));
  const V z = r * r;
  return lookup<Table>(LowIndex<Int<V>>{int_bits(shifted)}) + mul_add(r * z, horner(z, series), r);
}
} // namespace detail

/// The angle of (x, y), from -pi to pi, as a double-word of at most 2^-9 of it: `extended` or `full`.
///
/// y and x are exact double-words, |lo| <= 2^-50 |hi|; finite; not both 0, and where not 0 within 2^-900 ..
/// 2^900, as is y/x. Powers of y/x below 2^-170 underflow (harmless, but the flag is raised). The sign of a zero y is
/// kept, that of a zero x does not matter.
template <Accuracy A, class V> inline DoubleWord<V> angle(DoubleWord<V> y, DoubleWord<V> x) {
  static_assert(A == Accuracy::extended || A == Accuracy::full);
  return detail::angle_double_word<true, A>(y, x);
}

/// The same of two doubles: double-word for `extended` and `full`; for the others one double, never beyond pi
/// rounded to double.
template <Accuracy A, class V> inline auto angle(V y, V x) {
  if constexpr (A == Accuracy::extended || A == Accuracy::full) {
    return detail::angle_double_word<false, A>(DoubleWord<V>{y, V{}}, DoubleWord<V>{x, V{}});
  } else {
    const auto left = x < V{};
    const Bits<V> up = sign_of(y), turn = sign_of(zero_unless(left, x));
    y = flip_sign(y, up);
    x = abs(x);
    const auto [c, row] = detail::bounded_angle_row<ShortAngleRows>(y, x);
    const V r = sub_mul(y, c, x) / mul_add(c, y, x);
    const V z = r * r;
    const V t = lookup<inverse_trig::atan_short_rows>(row) + mul_add(r * z, detail::atan_series<A>(z), r);
    const V bounded = smaller_of(t, splat<V>(pi_hi / 2));
    return V(flip_sign(zero_unless(left, splat<V>(pi_hi)) + flip_sign(bounded, turn), up));
  }
}

/// atan(q) / q, z = q^2, |q| <= 1, by a series for the whole interval.
template <auto& Series, class V> inline V atan_ratio(V z) {
  if constexpr (sizeof(Lane<V>) == 8)
    return estrin(z, Series);
  else if constexpr (std::size(Series) <= 4)
    return horner(z, Series);
  else
    return by_pairs(z, Series); // higher powers underflow
}

/// The angle of (x, y) from the quotient of the smaller part by the larger one, without a table, not both 0: with
/// atan_bits21 or atan_bits11 for the series, in float, errors 2^-21.2 and 2^-11.9, with atan_whole_bits27, in double,
/// 2^-31.
template <auto& Series, class V> inline V angle_by_quotient(V y, V x) {
  using T = Lane<V>;
  const V up = abs(y), right = abs(x);
  const auto steep = up > right;
  const auto left = x < V{};
  const V q = smaller_of(up, right) / select(steep, up, right);
  const V base = select(steep, splat<V>(pi_below<T> / 2), zero_unless(left, splat<V>(pi_below<T>)));
  const std::remove_const_t<decltype(left)> backwards = left ^ steep;
  const V turned = flip_sign(q, bits(zero_unless(backwards, splat<V>(T(-0.0)))));
  return flip_sign(mul_add(turned, atan_ratio<Series>(q * q), base), sign_of(y));
}

/// The arc tangent of t, 0 <= t < 2^1000, never above pi/2 rounded to double: `full`, within 0.54 ulp, or the error
/// given above. The even tables serve bits50 and bits27, this with an error below 2^-27.1.
template <Accuracy A, class V> inline V arc_tangent(V t) {
  using namespace inverse_trig;
  if constexpr (A == Accuracy::bits50) {
    if constexpr (has_fused)
      return detail::arc_tangent_by_rows<8, atan_eighth50_rows>(t, atan_eighth50);
    else
      return detail::arc_tangent_by_rows<16, atan_sixteenth50_rows>(t, atan_sixteenth50);
  } else if constexpr (A == Accuracy::bits27) {
    return detail::arc_tangent_by_rows<8, atan_eighth27_rows>(t, atan_eighth27);
  } else {
    constexpr bool is_long = A == Accuracy::full;
    using Rows = std::conditional_t<is_long, LongAngleRows, ShortAngleRows>;
    const auto [c, row] = Rows::at(smaller_of(t, splat<V>(Rows::largest)));
    const V r = (t - c) / mul_add(c, t, splat<V>(1));
    const V z = r * r, series = detail::atan_series<A>(z);
    if constexpr (is_long) {
      const auto [table, table_tail] = lookup_pair<atan_long_rows>(row);
      return table + (r + mul_add(r * z, series, table_tail));
    } else {
      const V sum = lookup<atan_short_rows>(row) + mul_add(r * z, series, r);
      return smaller_of(sum, splat<V>(pi_hi / 2));
    }
  }
}

} // namespace kelvm::inline KELVM_BUILD
