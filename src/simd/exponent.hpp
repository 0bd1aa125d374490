// Powers of two by the exponent field.
#pragma once

#include "simd/vec.hpp"

namespace kelvm::inline KELVM_BUILD {

/// v 2^n, by n added to the exponent field: v and the result are normal. Of n the low 11 bits count (9 of a float's).
template <class V> inline V times_power_of_two(V v, std::type_identity_t<Bits<V>> n) {
  constexpr int fraction_bits = sizeof(Lane<V>) == 8 ? 52 : 23;
  return from_bits<V>(bits(v) + (n << fraction_bits));
}
/// 2^n, normal.
template <class V> inline V power_of_two(std::type_identity_t<Bits<V>> n) { return times_power_of_two(splat<V>(1), n); }
/// 1 / v for a power of two v, both normal.
template <class V> inline V inverse_power_of_two(V v) {
  static_assert(sizeof(Lane<V>) == 8);
  return from_bits<V>(0x7FE0000000000000u - bits(v));
}

} // namespace kelvm::inline KELVM_BUILD
