// The floating-point mode of a call: rounding direction and the treatment of subnormals, as the SSE control word has
// them.
#pragma once

#include "kelvm/types.h"
#include "simd/isa.hpp"

namespace kelvm::inline KELVM_BUILD {

/// The mode fields of MXCSR: flush-to-zero, rounding control, denormals-are-zero.
inline constexpr unsigned mode_mask = 0xE040;

/// What a kernel computes in. The values of the fixed modes are the fields' bits.
enum class Mode : unsigned { nearest = 0, toward_zero = 0x6000, callers = ~0u };

/// How a loop ended: the call's status, and whether an element earned an underflow, whatever came after it.
struct Outcome {
  kelStatus status = kelStatusOk;
  bool underflowed = false;
};

/// Calls loop(arguments...) in the mode. Where the control word has to change, the word found at entry is loaded back
/// after the loop, its sticky flags included. With StrayUnderflow, an underflow that no element earned is taken back.
/// `loop` must be a function that is not inlined here: the compiler moves floating-point operations across a change of
/// the control word, but not across a call.
template <Mode M, bool StrayUnderflow, class... Parameters, class... Arguments>
inline kelStatus in_mode(Outcome (*loop)(Parameters...), const Arguments&... arguments) {
  static_assert(M != Mode::callers || !StrayUnderflow);
  if constexpr (M == Mode::callers) {
    return loop(arguments...).status;
  } else {
    constexpr unsigned underflow_flag = 0x10;
    const unsigned found = _mm_getcsr();
    if ((found & mode_mask) != unsigned(M)) [[unlikely]] {
      _mm_setcsr((found & ~mode_mask) | unsigned(M));
      const kelStatus status = loop(arguments...).status;
      _mm_setcsr(found);
      return status;
    }
    const Outcome outcome = loop(arguments...);
    if constexpr (StrayUnderflow) {
      if (!outcome.underflowed && (found & underflow_flag) == 0) {
        const unsigned left = _mm_getcsr();
        if ((left & underflow_flag) != 0) _mm_setcsr(left & ~underflow_flag);
      }
    }
    return outcome.status;
  }
}

} // namespace kelvm::inline KELVM_BUILD
