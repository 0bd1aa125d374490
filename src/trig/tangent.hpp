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

/// The tangent of any finite double to about 2^-58, head rounded.
DoubleWord<double> tangent_of(double x);

/// The lanes whose angle is brought into [-pi/4, pi/4) by an odd number of quarter turns: marks.
template <class I> inline I odd_quarters(I index) { return (index + 8) << 59; }

/// tan(index pi/32 + r) from a remainder without tail, its polynomial given: five roundings, below 2^-51 together.
template <class V, int N> inline V short_tangent(V r, Int<V> index, const double (&series)[N]) {
  const V z = r * r;
  const V t = r + r * z * estrin(z, series);
  const V table = lookup<tangent>(index & 15);
  const V sum = table + t, difference = 1.0 - table * t;
  const Int<V> odd = odd_quarters(index);
  const V quotient = select(odd, difference, sum) / select(odd, sum, difference);
  return flip_sign(quotient, sign_of(bit_cast<V>(odd)));
}

/// The remainder of reduce() without tail.
template <class V> inline V remainder(V x, V k) {
  return x - k * parts_of_pi_32[0] - k * parts_of_pi_32[1] - k * parts_of_pi_32[2];
}

} // namespace kelvm::inline KELVM_BUILD
