// Numbers that many functions need, by type.
#pragma once

#include "simd/types.hpp"

namespace kelvm::inline KELVM_BUILD {

template <class T> inline constexpr T infinity = T(__builtin_inf());
template <class T> inline constexpr T largest_finite = sizeof(T) == 8 ? T(0x1.fffffffffffffp1023) : T(0x1.fffffep127f);
template <class T> inline constexpr T smallest_normal = sizeof(T) == 8 ? T(0x1p-1022) : T(0x1p-126);
/// The largest number below 1.
template <class T> inline constexpr T below_one = sizeof(T) == 8 ? T(0x1.fffffffffffffp-1) : T(0x1.fffffep-1f);

/// pi as a double-word; halves and quarters of it are exact.
inline constexpr double pi_hi = 0x1.921fb54442d18p+1, pi_lo = 0x1.1a62633145c07p-53;
/// pi rounded toward zero.
template <class T> inline constexpr T pi_below = sizeof(T) == 8 ? T(pi_hi) : T(0x1.921fb4p+1f);

/// Added to |x| < 2^51 (2^22 for floats) it rounds x to an integer, which stands in the low bits of the sum; subtracted
/// again it leaves that integer.
template <class T> inline constexpr T rounding_constant = sizeof(T) == 8 ? T(0x1.8p52) : T(0x1.8p23);

} // namespace kelvm::inline KELVM_BUILD
