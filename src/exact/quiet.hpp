// Formulas in functions of registers: what they do lest they raise a flag that no element earns. The array functions
// take such flags back, once a call, where it costs nothing.
#pragma once

#include "simd/isa.hpp"

namespace kelvm::inline KELVM_BUILD {

/// Whether flags that a formula raises stay.
#if KELVM_IN_REGISTERS
inline constexpr bool flags_stay = true;
#else
inline constexpr bool flags_stay = false;
#endif

} // namespace kelvm::inline KELVM_BUILD
