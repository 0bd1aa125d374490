// Masks. Comparing vectors gives a Mask<V>, all bits of a lane set or none; comparing scalars gives bool. Combine masks
// with & | and !, consume them with select, zero_unless, any and movemask.
#pragma once

#include "simd/memory.hpp"
#include "simd/register.hpp"

namespace kelvm::inline KELVM_BUILD {

/// a where the mask is set, b elsewhere. A vector mask counts by its sign bit alone.
template <class M, class V> inline V select(M mask, V a, std::type_identity_t<V> b) {
  if constexpr (std::is_same_v<M, bool>) {
    return mask ? a : b;
  } else if constexpr (requires { Register<Floating<V>>::blend; }) {
    using F = Floating<V>;
    return bit_cast<V>(Register<F>::blend(bit_cast<F>(mask), bit_cast<F>(a), bit_cast<F>(b)));
  } else {
    return mask < 0 ? a : b;
  }
}

/// v as a value of which clang knows nothing: of x == infinity it makes x >= infinity, which quiet NaNs signal.
template <class V> inline V unknown(V v) {
#ifdef __clang__
  asm("" : "+x"(v));
#endif
  return v;
}

/// v where the mask is set, +0 elsewhere.
template <class M, class V> inline V zero_unless(M mask, V v) {
  if constexpr (std::is_same_v<M, bool>)
    return mask ? v : V(0);
  else
    return from_bits<V>(bits(v) & bit_cast<Bits<V>>(mask));
}

/// The sign bit of every lane, lane 0 lowest: the lanes of a mask.
template <class V> inline BitMask movemask(V v) {
  if constexpr (std::is_same_v<V, bool>)
    return v;
  else if constexpr (lanes<V> == 1)
    return BitMask(bits(v) >> (8 * sizeof v - 1));
  else
    return Register<Floating<V>>::movemask(bit_cast<Floating<V>>(v));
}
template <class M> inline bool any(M mask) { return movemask(mask) != 0; }

/// A mask of which only the sign bits count, so that one subtraction can make it and it can be or-ed together
/// without a comparison. sign_mask() makes it from any mask; select, movemask and any take it.
template <class V> using SignMask = Int<V>;
template <class V> inline SignMask<V> sign_mask(Mask<V> mask) {
  if constexpr (lanes<V> == 1)
    return mask ? -1 : 0;
  else
    return mask;
}
/// The lanes whose bits, taken as signed, exceed the limit's: |x| > limit for x = abs(v), NaN included.
/// Both must be non-negative as integers.
template <class V> inline SignMask<V> above(V v, Lane<V> limit) { return int_bits(splat<V>(limit)) - int_bits(v); }

} // namespace kelvm::inline KELVM_BUILD
