// Whether the magnitudes of all lanes are in an interval, in as few operations as the instruction set allows.
#pragma once

#include "simd/arithmetic.hpp"
#include "simd/mask.hpp"

namespace kelvm::inline KELVM_BUILD {

/// Whether the magnitude of some lane of the vectors is outside [low, high] or, unless BothSigns, its sign is set. low
/// and high are positive and finite; a NaN is outside. Where of doubles the upper words are compared, those next to the
/// bounds may count as outside.
template <bool BothSigns, class V, class... More>
inline bool any_outside(Lane<V> low, Lane<V> high, V first, More... more) {
#if KELVM_AVX512
  using Word = Lane<Bits<V>>;
  constexpr int lower = 0;
#else
  using Word = std::uint32_t;
  constexpr int lower = 8 * sizeof(Lane<V>) - 32;
#endif
  using Words = Vec<Word, sizeof(V) / sizeof(Word)>;
  constexpr Lane<Bits<V>> lower_bits = (Lane<Bits<V>>(1) << lower) - 1;
  const Word from = Word((bits(low) + lower_bits) >> lower) << BothSigns;
  const Word length = (Word(((bits(high) + 1) >> lower) - 1) << BothSigns) - from;
  const auto less = [](V x, Word subtrahend) {
    const Words words = bit_cast<Words>(x);
    return (BothSigns ? words + words : words) - subtrahend;
  };
#if KELVM_AVX512
  [[maybe_unused]] const auto larger = [](Words a, Words b) { return a > b ? a : b; }; // of one vector, unused
  Words above_low = less(first, from);
  ((above_low = larger(less(more, from), above_low)), ...);
  if constexpr (sizeof(Word) == 8)
    return _mm512_cmpgt_epu64_mask((__m512i)above_low, _mm512_set1_epi64(std::int64_t(length))) != 0;
  else
    return _mm512_cmpgt_epu32_mask((__m512i)above_low, _mm512_set1_epi32(std::int32_t(length))) != 0;
#else
  // There are comparisons of signed words alone, by `greater`, which g++ leaves as it is with constants from 0 on.
  using Signed = Int<Words>;
  constexpr Word least = sign_bit<Word>;
  const auto lanes_where = [](Signed greater) { return movemask(bit_cast<Int<V>>(greater)); };
  const auto extreme = [&](Word subtrahend, [[maybe_unused]] auto better) {
    Signed result = bit_cast<Signed>(less(first, subtrahend));
    ((result = better(bit_cast<Signed>(less(more, subtrahend)), result)), ...);
    return result;
  };
  if (length >= least)
    return lanes_where(extreme(from + least, [](Signed a, Signed b) { return a > b ? a : b; }) >
                       std::int32_t(length - least)) != 0;
  return lanes_where(extreme(from + length + least + 1, [](Signed a, Signed b) { return a < b ? a : b; }) >
                     std::int32_t(least - 2 - length)) != all_lanes<V>;
#endif
}

/// Whether 1 + x of some lane is outside [low, high] or, as for a tiny x, rounds to 1.
template <class V> inline bool any_sum_with_1_outside(Lane<V> low, Lane<V> high, V x) {
  const V sum = Lane<V>(1) + x;
  const unsigned outside = any_outside<false>(low, high, sum), one = any(sum == splat<V>(1)); // one branch for both
  return (outside | one) != 0;
}

} // namespace kelvm::inline KELVM_BUILD
