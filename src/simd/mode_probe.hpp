// What mode the processor computes in, told from what operations give: reading the control word takes as long as a
// short call's arithmetic, and waits for all that is under way.
#pragma once

#include "simd/isa.hpp"

namespace kelvm::inline KELVM_BUILD {

#if KELVM_AVX512
inline constexpr bool has_mode_probe = true;
/// Whether operations round to nearest and know subnormal numbers, as operands and as results. Raises no flag.
inline bool rounds_to_nearest_with_subnormals() {
  constexpr int current_direction = _MM_FROUND_CUR_DIRECTION | _MM_FROUND_NO_EXC;
  __m128 v = _mm_setr_ps(0, 1.5f, -1.5f, 0);
  asm volatile("" : "+v"(v)); // nothing for the compiler to compute
  v = _mm_sub_round_ss(_mm_roundscale_ps(v, current_direction), _mm_set_ss(0x1p-130f), // a static direction: no flags
                       _MM_FROUND_TO_NEAREST_INT | _MM_FROUND_NO_EXC);
  const __m128 nearest = _mm_setr_ps(-0x1p-130f, 2, -2, 0);
  return _mm_cmpneq_epi32_mask(_mm_castps_si128(v), _mm_castps_si128(nearest)) == 0;
}
#else
/// Without static rounding subnormal results cannot be looked at and no flag raised.
inline constexpr bool has_mode_probe = false;
inline bool rounds_to_nearest_with_subnormals() { return false; }
#endif

} // namespace kelvm::inline KELVM_BUILD
