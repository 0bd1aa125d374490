// The arc tangent core, for any width: the angle of a point, which every inverse circular function needs.
//
// The angle of (x, y), x >= 0, y >= 0, is that of a table point (1, c) with c near y/x, and the angle between the two:
//
//   atan(y/x) = atan c + atan r,   r = (y - c x) / (x + c y)
//
// c is y/x rounded to few bits, so that c x and c y are exact in two parts, and y - c x loses nothing by cancellation.
// For small angles c is 0 and r the quotient itself; c stops at 15.75 or 32, as r goes to 1/c where y/x goes to
// infinity. atan r is an odd polynomial. After Tang, "Table-lookup algorithms for elementary functions and their error
// analysis", 1991. Three tables:
//
//   long     642 rows, c = 0 and 64 an octave from 1/32 on: |r| < 1/32, and below 2^-7 of the angle but for c = 0.
//            atan c has a head and a tail.
//   short    64 rows, few enough for registers: c a multiple of 1/4, |r| < 1/8. atan c is rounded.
//   eighth   64 rows of which the arc tangent of one number makes more: c a multiple of 1/8 and |r| < 1/16; c stops at
//            63/8, from where on an error of atan r is small next to the result.
//
// Other quadrants: |y| and |x| take part, x < 0 turns the angle t into pi - t, and the sign of y is that of the result.
#pragma once

#include "exact/exact.hpp"
#include "exact/polynomial.hpp"
#include "simd/table.hpp"
#include "trig/inverse_trig_tables.hpp"

namespace kelvm::inline KELVM_BUILD {

/// How exact an angle in double arithmetic is. As head and tail: `pow` with a relative error below 2^-68.9, `a53` below
/// 2^-56.5. As one double: `a50`, `a24`, `a38` and `a26` below 2^-50.5, 2^-49.5, 2^-41 and 2^-33.
enum class AngleAccuracy { pow, a53, a50, a24, a38, a26 };

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
    return {keep(tabulated, from_bits<V>(centred & ~(2 * half - 1))),
            bit_cast<Int<V>>(keep(tabulated, from_bits<V>((centred >> shift) - ((lowest >> shift) - 1))))};
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

/// atan r - r over r z, z = r^2.
template <AngleAccuracy A, class V> inline V atan_series(V z) {
  if constexpr (A == AngleAccuracy::a53)
    return estrin(z, inverse_trig::atan_a53);
  else if constexpr (A == AngleAccuracy::a50)
    return estrin(z, inverse_trig::atan_a50);
  else if constexpr (A == AngleAccuracy::a24)
    return estrin(z, inverse_trig::atan_a24);
  else if constexpr (A == AngleAccuracy::a38)
    return estrin(z, inverse_trig::atan_a38);
  else
    return estrin(z, inverse_trig::atan_a26);
}

/// The angle of a point of the first quadrant. Without `Tails` those of y and x are 0.
template <AngleAccuracy A, bool Tails, class V> inline HeadTail<V> first_quadrant_angle(HeadTail<V> y, HeadTail<V> x) {
  const auto [c, row] = bounded_angle_row<LongAngleRows>(y.head, x.head);
  const auto [table, table_tail] = lookup_pair<inverse_trig::atan_long_rows>(row);

  // The products with c are exact, and so is the difference but for y/x beyond the table.
  const V x_upper = from_bits<V>(bits(x.head) & ~std::uint64_t(0xFF)), x_lower = x.head - x_upper;
  HeadTail<V> numerator, denominator;
  if constexpr (A == AngleAccuracy::pow) {
    const V y_upper = from_bits<V>(bits(y.head) & ~std::uint64_t(0xFF)), y_lower = y.head - y_upper;
    const HeadTail<V> difference = fast_two_sum(y.head, -(c * x_upper));
    numerator = two_sum(difference.head, -(c * x_lower));
    numerator.tail += difference.tail;
    denominator = two_sum(x.head, c * y_upper);
    denominator.tail += c * y_lower;
    if constexpr (Tails) {
      numerator.tail += y.tail - c * x.tail;
      denominator.tail += x.tail + c * y.tail;
    }
  } else {
    numerator = {(y.head - c * x_upper) - c * x_lower, y.tail - c * x.tail};
    denominator = {x.head + c * y.head, x.tail};
  }

  // r, a head of 26 bits and a tail
  const V reciprocal = 1.0 / denominator.head;
  const V r = head_of(numerator.head * reciprocal);
  const V upper = head_of(denominator.head), lower = denominator.head - upper;
  V rest = (numerator.head - r * upper) - r * lower;
  if constexpr (Tails || A == AngleAccuracy::pow) rest += numerator.tail - r * denominator.tail;
  const V r_tail = rest * reciprocal, r_sum = r + r_tail;

  const HeadTail<V> sum = fast_two_sum(table, r);
  if constexpr (A == AngleAccuracy::pow) {
    // atan r = r - r (z/3 - z^2 P(z)), z = r^2; the head of r z/3 is exact
    const V z_head = r * r, z_tail = (r + r_sum) * r_tail, z = z_head + z_tail;
    const V third = head_of(z * 0x1.5555555555555p-2);
    const V third_tail = ((z_head - 3.0 * third) + z_tail) * 0x1.5555555555555p-2;
    const HeadTail<V> head = fast_two_sum(sum.head, -(r * third));
    const V cubic = r_tail * third + r_sum * (third_tail - (z * z) * estrin(z, inverse_trig::atan_pow));
    return {head.head, (sum.tail + head.tail) + (table_tail + (r_tail - cubic))};
  } else {
    const V z = r_sum * r_sum;
    return {sum.head, (sum.tail + table_tail) + (r_tail + (r_sum * z) * atan_series<A>(z))};
  }
}

/// The first quadrant's angle t of (|x|, |y|) brought to that of (x, y): `left` has the lanes of negative x.
template <bool Tails, AngleAccuracy A, class V> inline HeadTail<V> angle_head_tail(HeadTail<V> y, HeadTail<V> x) {
  const Bits<V> up = sign_of(y.head);
  const auto left = x.head < V{};
  const Bits<V> turn = sign_of(keep(left, x.head));
  const HeadTail<V> t = first_quadrant_angle<A, Tails>(HeadTail<V>{flip_sign(y.head, up), flip_sign(y.tail, up)},
                                                       HeadTail<V>{abs(x.head), flip_sign(x.tail, turn)});
  const HeadTail<V> sum = fast_two_sum(keep(left, splat<V>(inverse_trig::pi_head)), flip_sign(t.head, turn));
  const V tail = sum.tail + (keep(left, splat<V>(inverse_trig::pi_tail)) + flip_sign(t.tail, turn));
  return {flip_sign(sum.head, up), flip_sign(tail, up)};
}
} // namespace detail

/// The angle of (x, y), from -pi to pi, as a head and a tail of at most 2^-9 of it: `pow` or `a53`.
///
/// y and x are exact as head and tail, |tail| <= 2^-50 |head|; finite; not both 0, and where not 0 within 2^-900 ..
/// 2^900, as is y/x. Powers of y/x below 2^-170 underflow (harmless, but the flag is raised). The sign of a zero y is
/// kept, that of a zero x does not matter.
template <AngleAccuracy A, class V> inline HeadTail<V> angle(HeadTail<V> y, HeadTail<V> x) {
  static_assert(A == AngleAccuracy::pow || A == AngleAccuracy::a53);
  return detail::angle_head_tail<true, A>(y, x);
}

/// The same of two doubles: head and tail for `pow` and `a53`; for the others one double, never beyond pi
/// rounded to double.
template <AngleAccuracy A, class V> inline auto angle(V y, V x) {
  if constexpr (A == AngleAccuracy::pow || A == AngleAccuracy::a53) {
    return detail::angle_head_tail<false, A>(HeadTail<V>{y, V{}}, HeadTail<V>{x, V{}});
  } else {
    const auto left = x < V{};
    const Bits<V> up = sign_of(y), turn = sign_of(keep(left, x));
    y = flip_sign(y, up);
    x = abs(x);
    const auto [c, row] = detail::bounded_angle_row<ShortAngleRows>(y, x);
    const V r = (y - c * x) / (x + c * y);
    const V z = r * r;
    const V t = lookup<inverse_trig::atan_short_rows>(row) + (r + (r * z) * detail::atan_series<A>(z));
    const V bounded = smaller_of(t, splat<V>(inverse_trig::half_pi_head));
    return V(flip_sign(keep(left, splat<V>(inverse_trig::pi_head)) + flip_sign(bounded, turn), up));
  }
}

/// The angle of (x, y) in float arithmetic, for finite floats that are not both 0: with atan_a21 or atan_a11 for the
/// series, errors 2^-22 and 2^-12.
template <auto& Series, class V> inline V float_angle(V y, V x) {
  const V up = abs(y), right = abs(x);
  const auto steep = up > right;
  const auto left = x < V{};
  const V q = smaller_of(up, right) / select(steep, up, right);
  const V z = q * q;
  const V t = q + (q * z) * estrin(z, Series);
  const V base = select(steep, splat<V>(inverse_trig::half_pi_below), keep(left, splat<V>(inverse_trig::pi_below)));
  const V turned = flip_sign(t, sign_of(keep(left, x)) ^ sign_of(keep(steep, splat<V>(-0.0f))));
  return flip_sign(base + turned, sign_of(y));
}

/// The arc tangent of t, 0 <= t < 2^1000, never above pi/2 rounded to double: `a53`, within 0.54 ulp, or what is below.
template <AngleAccuracy A, class V> inline V arc_tangent(V t) {
  constexpr bool is_long = A == AngleAccuracy::a53;
  using Rows = std::conditional_t<is_long, LongAngleRows, ShortAngleRows>;
  const auto [c, row] = Rows::at(smaller_of(t, splat<V>(Rows::largest)));
  const V r = (t - c) / (1.0 + c * t);
  const V z = r * r;
  const V rest = (r * z) * detail::atan_series<A>(z);
  if constexpr (is_long) {
    const auto [table, table_tail] = lookup_pair<inverse_trig::atan_long_rows>(row);
    return table + (r + (table_tail + rest));
  } else {
    const V sum = lookup<inverse_trig::atan_short_rows>(row) + (r + rest);
    return smaller_of(sum, splat<V>(inverse_trig::half_pi_head));
  }
}

/// The same within 2^-27.1, from the eighth table.
template <class V> inline V arc_tangent_a26(V t) {
  constexpr double largest = 7.875;
  const V shifted = smaller_of(t, splat<V>(largest)) + 0x1.8p49; // rounds to a multiple of 1/8
  const V c = shifted - 0x1.8p49;
  const V r = (t - c) / (1.0 + c * t);
  const V z = r * r;
  const V table = lookup<inverse_trig::atan_eighth_rows>(LowIndex<Int<V>>{int_bits(shifted)});
  return table + (r + (r * z) * estrin(z, inverse_trig::atan_eighth));
}

} // namespace kelvm::inline KELVM_BUILD
