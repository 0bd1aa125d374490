// The floating-point mode of a call: rounding direction and the treatment of subnormals, as the SSE control word has
// them.
#pragma once

#include "simd/isa.hpp"

namespace kelvm::inline KELVM_BUILD {

/// The mode fields of MXCSR: flush-to-zero, rounding control, denormals-are-zero.
inline constexpr unsigned mode_mask = 0xE040;

/// What a kernel computes in. The values of the fixed modes are the fields' bits.
enum class Mode : unsigned { nearest = 0, toward_zero = 0x6000, callers = ~0u };

/// Calls loop(arguments...) in the mode. Where the control word has to change, the word found at entry is loaded back
/// after the loop, its sticky flags included. `loop` must be a function that is not inlined here: the compiler moves
/// floating-point operations across a change of the control word, but not across a call.
template <Mode M, class... Parameters, class... Arguments>
inline auto in_mode(auto(*loop)(Parameters...), const Arguments&... arguments) {
  if constexpr (M == Mode::callers) {
    return loop(arguments...);
  } else {
    const unsigned found = _mm_getcsr();
    if ((found & mode_mask) == unsigned(M)) [[likely]]
      return loop(arguments...);
    _mm_setcsr((found & ~mode_mask) | unsigned(M));
    const auto result = loop(arguments...);
    _mm_setcsr(found);
    return result;
  }
}

} // namespace kelvm::inline KELVM_BUILD
