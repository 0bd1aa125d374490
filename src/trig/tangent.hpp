// The tangent in double, by tables: x = k pi/32 + r, |r| <= pi/64, and with a = k pi/32 brought into [-pi/4, pi/4) by a
// multiple of pi/2, T = tan a and t = tan r
//
//   tan(a + r) = (T + t) / (1 - T t)      and       tan(a + r + pi/2) = -(1 - T t) / (T + t).
//
// One division either way. T + t is small next to the zeros and the poles of the tangent, where T = 0 and t keeps the
// relative accuracy of r.
#pragma once

#include "exact/polynomial.hpp"
#include "trig/sine_cosine.hpp"
#include "trig/trig_fits.hpp"

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

} // namespace kelvm::inline KELVM_BUILD
