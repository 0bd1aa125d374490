// The tangent in two ways. By tables, in double: x = k pi/32 + r, |r| <= pi/64, and with a = k pi/32 brought into
// [-pi/4, pi/4) by a multiple of pi/2, T = tan a and t = tan r
//
//   tan(a + r) = (T + t) / (1 - T t)      and       tan(a + r + pi/2) = -(1 - T t) / (T + t).
//
// T + t is small next to the zeros and the poles of the tangent, where T = 0 and t keeps the relative accuracy of r.
//
// By a quotient: x = k pi/2 + r, |r| <= pi/4, and tan r = r N(r^2) / D(r^2); for odd k the negative reciprocal. Every
// operation is odd in x, or even. One division either way.
#pragma once

#include "exact/polynomial.hpp"
#include "trig/sine_cosine.hpp"
#include "trig/trig_fits.hpp"

#include <array>

namespace kelvm::inline KELVM_BUILD {

/// The tangent of any finite double to about 2^-58, hi rounded.
DoubleWord<double> tangent_of(double x);

/// A mask of the lanes whose angle is brought into [-pi/4, pi/4) by an odd number of quarter turns.
template <class I> inline I odd_quarters(I index) { return (index + 8) << 59; }

/// tan(index pi/32 + r) from a remainder without tail, its polynomial given: five roundings, below 2^-50 together.
template <class V, int N> inline V short_tangent(V r, Int<V> index, const double (&series)[N]) {
  const V z = r * r;
  const V t = mul_add(r * z, estrin(z, series), r);
  const V table = lookup<tangent>(index & 15);
  const V sum = table + t, difference = sub_mul(splat<V>(1), table, t);
  const Int<V> odd = odd_quarters(index);
  const V quotient = select(odd, difference, sum) / select(odd, sum, difference);
  return flip_sign(quotient, sign_of(bit_cast<V>(odd)));
}

/// The remainder of reduce() without tail.
template <class V> inline V remainder(V x, V k) {
  const V t = sub_mul(sub_mul(x, k, splat<V>(parts_of_pi_32[0])), k, splat<V>(parts_of_pi_32[1]));
  return sub_mul(t, k, splat<V>(parts_of_pi_32[2]));
}
/// The same of a float, which does not come so near a multiple of pi/32 that the third part counts: where x - k pi/32
/// is fused, its first word is exact.
template <class V> inline V remainder_of_float(V x, V k) {
  if constexpr (has_fused)
    return sub_mul(sub_mul(x, k, splat<V>(pi_hi / 32)), k, splat<V>(pi_lo / 32));
  else
    return remainder(x, k);
}

/// x = k pi/2 + r; the sign of `odd` is set where k is odd, its other bits are zero.
template <class V> struct QuarterTurns {
  V r;
  Bits<V> odd;
};

/// pi/2. Without fused operations all parts but the last are so short that their products with k are exact. They are
/// positive: a product of k = +0 and another one would take the sign of x = -0.
template <class T>
inline constexpr auto parts_of_half_pi = [] {
  if constexpr (sizeof(T) == 8 && has_fused)
    return std::array{0x1.921fb54442d18p+0, 0x1.1a62633145c06p-54, 0x1.c1cd129024e08p-107};
  else if constexpr (sizeof(T) == 8)
    return std::array{0x1.921fb5444p+0, 0x1.68c234c4cp-39, 0x1.98a2e03707344p-77};
  else if constexpr (has_fused)
    return std::array{0x1.921fb4p+0f, 0x1.4442dp-24f, 0x1.84698ap-48f};
  else
    return std::array{1.5703125f, 0x1.fb4p-12f, 0x1.444p-24f, 0x1.68c234p-39f};
}();

/// |x| < 90112, of floats 10000. The remainder has no tail: one rounding, next to multiples of pi/2 two.
template <class V> inline QuarterTurns<V> quarter_turns(V x) {
  using T = Lane<V>;
  const V constant = splat<V>(-rounding_constant<T>); // negative so that one serves both steps
  const V shifted = mul_sub(x, splat<V>(T(sizeof(T) == 8 ? 0x1.45f306dc9c883p-1 : 0x1.45f306p-1)), constant);
  const V k = shifted + constant;
#pragma GCC unroll 4
  for (const T part : parts_of_half_pi<T>) x = sub_mul(x, k, splat<V>(part));
  return {x, bits(shifted) << (8 * sizeof(T) - 1)};
}

/// The tangent of such an angle, N and D given.
template <class V, int M, int N>
inline V tangent_quotient(QuarterTurns<V> angle, const Lane<V> (&numerator)[M], const Lane<V> (&denominator)[N]) {
  const V z = angle.r * angle.r;
  const V sine = angle.r * horner(z, numerator), cosine = horner(z, denominator); // times the same factor
  const V dividend = select(bit_cast<SignMask<V>>(angle.odd), cosine, sine);
  const V divisor = from_bits<V>(bits(sine) ^ bits(cosine) ^ bits(dividend)); // the other one
  return flip_sign(dividend / divisor, angle.odd);
}

} // namespace kelvm::inline KELVM_BUILD
