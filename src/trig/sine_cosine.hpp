// The core of the circular functions in double: reduction by pi/32, sine and cosine of the sum of a table angle and a
// small remainder, each as a double-word. Kernels round the pair once; functions built on sine and cosine go on with
// it.
//
//   x = index pi/32 + r, |r| <= pi/64, r = hi + lo
//   sin(a + r) = sin a + cos a r + (sin a (cos r - 1) + cos a (sin r - r))
//
// with a = index pi/32 from a table. cos a is power + rest: power r is exact, rest r is small, and the rounding errors
// of the two leading sums go into the tail, as do the tails of sin a and r. The cosine is the sine a quarter turn, 16
// rows, further. Tang, "Table-lookup algorithms for elementary functions and their error analysis", 1991.
//
// Error of hi + lo: 2^-58 relative for |x| < 90112, next to the zeros too; the three parts of pi/32 hold 125 bits,
// which leaves 2^-106 absolute.
#pragma once

#include "simd/table.hpp"
#include "trig/reduction.hpp"
#include "trig/trig_tables.hpp"

namespace kelvm::inline KELVM_BUILD {

/// x = index pi/32 + hi + lo modulo 2 pi; only the low six bits of the index count.
template <class V> struct Remainder {
  V hi, lo;
  Int<V> index;
};

inline constexpr double thirty_two_over_pi = 0x1.45f306dc9c883p+3;
inline constexpr double parts_of_pi_32[] = {0x1.921fb544p-4, 0x1.0b4611a6p-38, 0x1.3198a2e037073p-73};

/// Rounds by adding 1.5 * 2^52, which leaves the index in the low bits of the sum. |x| < 2^17.
template <class V> inline Remainder<V> reduce(V x) {
  const V shifted = x * thirty_two_over_pi + rounding_constant<double>;
  const V k = shifted - rounding_constant<double>;
  const V t = x - k * parts_of_pi_32[0];
  const V head = t - k * parts_of_pi_32[1];
  const V tail = ((t - head) - k * parts_of_pi_32[1]) - k * parts_of_pi_32[2];
  return {head, tail, int_bits(shifted)};
}

/// Any finite doubles brought below 2^17: x = y + tail + index pi/32 modulo 2 pi; smaller ones are their own y.
template <class V> struct WithinReach {
  V y, lo;
  Int<V> index;

  explicit WithinReach(V x) : y(x), lo{}, index{} {
    const SignMask<V> far = above(abs(x), 0x1.fffffffffffffp16);
    if constexpr (lanes<V> == 1) {
      if (!any(far)) return;
      const Quadrant reduced = reduce_to_quadrant(x);
      y = reduced.y.hi;
      lo = reduced.y.lo;
      index = 16 * reduced.number;
    } else {
      Quadrants<V> reduced;
      reduce_to_quadrants(select(far, x, splat<V>(0x1p17)), reduced);
      y = select(far, reduced.y.hi, x);
      lo = zero_unless(far < 0, reduced.y.lo);
      index = select(far, 16 * reduced.number, index);
    }
  }
};

/// reduce() for any finite doubles.
template <class V> inline Remainder<V> reduce_any(V x) {
  const WithinReach<V> within(x);
  const Remainder<V> r = reduce(within.y);
  return {r.hi, r.lo + within.lo, r.index + within.index};
}

/// sin r - r = r sine, cos r - 1 = cosine, by Taylor's series: |r| is small enough.
template <class V> struct SmallAngle {
  V sine, cosine;
  explicit SmallAngle(V r) {
    const V z = r * r;
    sine = z * (-0x1.5555555555555p-3 +
                z * (0x1.1111111111111p-7 + z * (-0x1.a01a01a01a01ap-13 + z * 0x1.71de3a556c734p-19)));
    cosine = z * (-0.5 + z * (0x1.5555555555555p-5 + z * (-0x1.6c16c16c16c17p-10 + z * 0x1.a01a01a01a01ap-16)));
  }
};

/// sin(x + Quarters pi/2), not normalised: |lo| <= 2^-9 |hi| or so.
template <int Quarters, class V> inline DoubleWord<V> sine(const Remainder<V>& r, const SmallAngle<V>& small) {
  const auto [cos_rest, sin_head, sin_tail, cos_power] = lookup_row<sine_rows>((r.index + 16 * Quarters) & 63);
  const V cos = cos_rest + cos_power;
  const V correction = sin_tail + r.lo * (cos - sin_head * r.hi);
  const V exact_product = cos_power * r.hi, rest_product = cos_rest * r.hi;
  const V sum = sin_head + exact_product;
  const V head = sum + rest_product;
  // The tail with its sign changed: subtracted from a head of -0 it leaves -0.
  const V minus_error = (sum - sin_head) - exact_product;
  const V error = (sum - head) + rest_product;
  const V minus_tail = ((minus_error - correction) - error) - small.sine * r.hi * cos - small.cosine * sin_head;
  return {head, -minus_tail};
}

} // namespace kelvm::inline KELVM_BUILD
