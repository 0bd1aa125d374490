// Numbers that many functions need, by type.
#pragma once

#include "simd/types.hpp"

namespace kelvm::inline KELVM_BUILD {

template <class T> inline constexpr T infinity = T(__builtin_inf());
template <class T> inline constexpr T largest_finite = sizeof(T) == 8 ? T(0x1.fffffffffffffp1023) : T(0x1.fffffep127f);
template <class T> inline constexpr T smallest_normal = sizeof(T) == 8 ? T(0x1p-1022) : T(0x1p-126);

/// Added to |x| < 2^51 (2^22 for floats) it rounds x to an integer, which stands in the low bits of the sum; subtracted
/// again it leaves that integer.
template <class T> inline constexpr T rounding_constant = sizeof(T) == 8 ? T(0x1.8p52) : T(0x1.8p23);

} // namespace kelvm::inline KELVM_BUILD
