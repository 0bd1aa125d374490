// Formulas in functions of registers: what they do lest they raise a flag that no element earns. The array functions
// take such flags back, once a call, where it costs nothing.
#pragma once

#include "simd/vec.hpp"

namespace kelvm::inline KELVM_BUILD {

/// Whether flags that a formula raises stay.
#if KELVM_IN_REGISTERS
inline constexpr bool flags_stay = true;
#else
inline constexpr bool flags_stay = false;
#endif

/// For the powers of z = r^2 in r + r z P(z), floats. Below 2^-28 the second term is lost in the rounding of r whatever
/// z, so that the powers need not underflow.
template <class V> inline V for_powers(V z) {
  if constexpr (flags_stay)
    return larger_of(z, splat<V>(0x1p-28f));
  else
    return z;
}

} // namespace kelvm::inline KELVM_BUILD
