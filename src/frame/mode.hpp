// The floating-point mode of a call: rounding direction and the treatment of subnormals, as the SSE control word has
// them.
#pragma once

#include "kelvm/types.h"
#include "simd/isa.hpp"

namespace kelvm::inline KELVM_BUILD {

/// The mode fields of MXCSR: flush-to-zero, rounding control, denormals-are-zero.
inline constexpr unsigned mode_mask = 0xE040;
/// The sticky flags of MXCSR, the same without inexact and denormal operand, and the bits that mask those exceptions.
inline constexpr unsigned all_flags = 0x3F, honest_flags = 0x1D, honest_masks = honest_flags << 7;

/// What a kernel computes in. The values of the fixed modes are the fields' bits. toward_zero_exactly: a kernel that
/// rounds nothing computes to nearest as well, which no caller can tell from toward zero. callers_masked: the caller's,
/// but flags have to be earned; callers: they are those of the operations.
enum class Mode : unsigned { nearest = 0, toward_zero_exactly = 0x6000, callers_masked = ~1u, callers = ~0u };

/// The fields and masks of the control word that a mode fixes, and what they hold in it.
template <Mode M>
inline constexpr unsigned fixed_bits = M == Mode::callers_masked ? honest_masks : mode_mask | honest_masks;
template <Mode M>
inline constexpr unsigned fixed_value = M == Mode::callers_masked ? honest_masks : unsigned(M) | honest_masks;

/// The IEEE flag of a warning code, as a bit of the control word.
constexpr unsigned flag_of(kelStatus code) {
  switch (code) {
  case kelStatusDomain:
    return 0x01;
  case kelStatusSingularity:
    return 0x04;
  case kelStatusOverflow:
    return 0x08;
  case kelStatusUnderflow:
    return 0x10;
  default:
    return 0;
  }
}

/// Beside the flags in Outcome::earned: the formula may have raised others. One word for both, so that an outcome is
/// returned in a register without a way through memory.
inline constexpr unsigned may_be_spurious = 0x80000000;

/// How a loop ended: the code of its last exceptional element, and the flags that any of them earned.
struct Outcome {
  kelStatus status = kelStatusOk;
  unsigned earned = 0;

  void add(kelStatus code) { add({code, flag_of(code)}); }
  void add(Outcome later) {
    if (later.status != kelStatusOk) status = later.status;
    earned |= later.earned;
  }
};

/// Loads the control word `found` at the entry of a call back after its loop, which had flags cleared, exceptions
/// masked and changed fields of the mode. Of the flags that elements have raised the masked ones stay where
/// `keep_flags` says so; the others trap, now that all results are written.
void leave_mode(unsigned found, unsigned raised, bool keep_flags);

/// What the sticky flags hold that no element has earned.
template <unsigned SpuriousFlags> constexpr unsigned unearned(unsigned flags, const Outcome& outcome) {
  return flags & SpuriousFlags & ~outcome.earned;
}

/// Calls the loop in the mode and with all exceptions masked whose flags have to be earned, with another control word
/// than that found.
template <Mode M, unsigned SpuriousFlags, class... Parameters>
[[gnu::noinline, gnu::cold]] kelStatus in_changed_mode(Outcome (*loop)(Parameters...), Parameters... arguments) {
  const unsigned found = _mm_getcsr();
  _mm_setcsr((found & ~(fixed_bits<M> | all_flags)) | fixed_value<M>);
  const Outcome outcome = loop(arguments...);
  const unsigned left = _mm_getcsr() & all_flags;
  const bool mode_stayed = (fixed_bits<M> & mode_mask & (found ^ fixed_value<M>)) == 0;
  leave_mode(found, left & ~unearned<SpuriousFlags>(left, outcome), mode_stayed);
  return outcome.status;
}

/// Calls loop(arguments...) in the mode, all exceptions masked whose flags have to be earned: formulas may overflow
/// where no element does, and an unmasked underflow traps for exact results too. Where the control word has to change
/// for the mode, the word found at entry is loaded back after the loop, its sticky flags included. Flags of
/// SpuriousFlags that no element earned are taken back. `loop` must be a function that is not inlined here: the
/// compiler moves floating-point operations across a change of the control word, but not across a call.
template <Mode M, unsigned SpuriousFlags, class... Parameters, class... Arguments>
inline kelStatus in_mode(Outcome (*loop)(Parameters...), const Arguments&... arguments) {
  static_assert(M != Mode::callers || SpuriousFlags == 0);
  if constexpr (M == Mode::callers) {
    return loop(arguments...).status;
  } else {
    const unsigned found = _mm_getcsr();
    const bool near = M == Mode::toward_zero_exactly && (found & (mode_mask | honest_masks)) == honest_masks;
    if (!near && (fixed_bits<M> & (found ^ fixed_value<M>)) != 0) [[unlikely]]
      return in_changed_mode<M, SpuriousFlags, Parameters...>(loop, arguments...);
    const Outcome outcome = loop(arguments...);
    if (near) { // the flags are those at entry, as where the mode changes
      if (_mm_getcsr() != found) [[unlikely]]
        _mm_setcsr(found);
    } else if (SpuriousFlags != 0 && (outcome.earned & may_be_spurious) != 0) {
      // Only then: reading the control word takes as long as a short call's arithmetic on some processors.
      const unsigned left = _mm_getcsr();
      if (const unsigned spurious = unearned<SpuriousFlags>(left & ~found, outcome); spurious != 0) [[unlikely]]
        _mm_setcsr(left & ~spurious);
    }
    return outcome.status;
  }
}

} // namespace kelvm::inline KELVM_BUILD
