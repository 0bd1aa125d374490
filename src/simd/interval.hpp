// Which lanes are outside an interval, by the sign bits of integer differences: no comparison of numbers, so that NaNs
// raise nothing.
#pragma once

#include "simd/mask.hpp"

namespace kelvm::inline KELVM_BUILD {

// low and high are positive and finite. A NaN is outside.

template <class V> inline Bits<V> below(V x, Lane<V> low) { return bits(x) - bits(splat<V>(low)); }
template <class V> inline Bits<V> beyond(V x, Lane<V> high) { return bits(splat<V>(high)) - bits(x); }

/// For any x.
template <class V> inline SignMask<V> nonzero(V x) { return -int_bits(abs(x)); }

/// For any x.
template <class V> inline SignMask<V> outside(V x, Lane<V> low, Lane<V> high) {
  return bit_cast<SignMask<V>>(below(x, low) | beyond(x, high));
}
/// For x >= +0, zero counting as inside.
template <class V> inline SignMask<V> outside_but_zero(V x, Lane<V> low, Lane<V> high) {
  return bit_cast<SignMask<V>>((below(x, low) & -bits(x)) | beyond(x, high));
}
/// For any x, +0 counting as inside.
template <class V> inline SignMask<V> outside_but_plus_zero(V x, Lane<V> low, Lane<V> high) {
  return int_bits(x) | outside_but_zero(x, low, high);
}

} // namespace kelvm::inline KELVM_BUILD
