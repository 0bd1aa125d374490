// Whether the numbers of many vectors are all in a wide range, by two operations a vector or less: for kernels whose
// own test takes more.
#pragma once

#include "simd/mask.hpp"

namespace kelvm::inline KELVM_BUILD {

/// Whether all numbers added are in [2^From, 2^(From + 1024)), floats in [2^From, 2^(From + 128)), or have such
/// magnitudes: by a constant that, added to the words of those numbers and no others, sets their highest bits, both or
/// the one below the sign.
template <class V, int From, bool BothSigns> class QuickRange {
public:
  void add(V v) { common &= bits(v) + (highest - least); }
  bool passed() const {
    const Bits<V> second = common + common;
    const bool all = movemask(bit_cast<V>(BothSigns ? second : common & second)) == all_lanes<V>;
    return __builtin_expect(all, true);
  }

private:
  using Word = Lane<Bits<V>>;
  static constexpr Word highest = Word(BothSigns ? 1 : 3) << (8 * sizeof(Word) - 2);
  static constexpr Word least = Word(From + (sizeof(Word) == 8 ? 1023 : 127)) << (sizeof(Word) == 8 ? 52 : 23);
  Bits<V> common = ~Bits<V>{};
};

/// The middle of a type's range: 2^-500 and 2^500, floats 2^-60 and 2^60, are in it.
template <class V, bool BothSigns = false>
using MiddleRange = QuickRange<V, sizeof(Lane<V>) == 8 ? -512 : -64, BothSigns>;

} // namespace kelvm::inline KELVM_BUILD
