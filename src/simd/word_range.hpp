// Whether the numbers of many vectors are in a range, by two operations a vector.
#pragma once

#include "simd/mask.hpp"

namespace kelvm::inline KELVM_BUILD {

/// The number farthest above Low of those added, lane by lane, by their bits as 32-bit words, of which the upper one of
/// a double counts. A number below Low is farther than all above it, as is one with a sign.
template <class V, std::uint32_t Low, std::uint32_t High> class WordRange {
public:
  using Words = Vec<std::uint32_t, sizeof(V) / 4>;

  void add(Words words) {
    const Words above_low = words - Low;
    farthest = above_low > farthest ? above_low : farthest;
  }
  /// Whether one is below Low or above High.
  bool outside() const {
#if KELVM_AVX512
    const __mmask16 counting = sizeof(Lane<V>) == 8 ? 0xAAAA : 0xFFFF;
    return _mm512_mask_cmpgt_epu32_mask(counting, (__m512i)farthest, _mm512_set1_epi32(int(High - Low))) != 0;
#else
    return any(bit_cast<Bits<V>>(farthest >= High - Low + 1));
#endif
  }

private:
  Words farthest{};
};

} // namespace kelvm::inline KELVM_BUILD
