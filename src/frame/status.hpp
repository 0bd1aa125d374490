// The status of a call and the results of exceptional elements. An element() routine returns one of these results:
//   return domain_error<T>(status);
// which stores the code (a later element overwrites an earlier one's) and raises the IEEE flag that belongs to it.
#pragma once

#include "kelvm/types.h"
#include "simd/vec.hpp"

namespace kelvm::inline KELVM_BUILD {

/// Raises the IEEE flag of a warning code by a double operation that cannot be optimised away: invalid (19),
/// divide-by-zero (18), overflow (12), underflow (17), the last two with inexact. Any other code raises nothing.
void ownRaiseFpException(kelStatus code);

/// The default NaN of the processor: quiet, sign bit set, no payload.
template <class T> inline T default_nan() {
  if constexpr (sizeof(T) == 8)
    return from_bits<T>(0xFFF8000000000000u);
  else
    return from_bits<T>(0xFFC00000u);
}
/// Whether x is a NaN, by its bits: a signalling one raises nothing.
template <class T> inline bool is_nan(T x) { return int_bits(abs(x)) > int_bits(T(__builtin_inf())); }
/// The bits of the largest signalling NaN.
template <class T> inline constexpr Int<T> last_signalling_nan = sizeof(T) == 8 ? 0x7FF7FFFFFFFFFFFF : 0x7FBFFFFF;
template <class T> inline bool is_signalling_nan(T x) {
  return is_nan(x) && int_bits(abs(x)) <= last_signalling_nan<T>;
}
/// The lanes that are quiet NaNs. A comparison is what a blend wants; without one of doubles a difference.
template <class V> inline SignMask<V> quiet_nans(V x) {
  if constexpr (lanes<V> != 1 && (sizeof(Lane<V>) == 4 || vector_bytes > 16))
    return int_bits(abs(x)) > splat<Int<V>>(last_signalling_nan<Lane<V>>);
  else
    return splat<Int<V>>(last_signalling_nan<Lane<V>>) - int_bits(abs(x));
}
/// The lanes in which some operands are quiet NaNs and the others finite.
template <class V, class... More> inline SignMask<V> quiet_nans(V x, V y, More... more) {
  // Upper words tell infinities and signalling NaNs, which become the least integers, from quiet NaNs, which come next.
  using Words = Vec<std::int32_t, sizeof(V) / 4>;
  constexpr int lower_bits = 8 * sizeof(Lane<V>) - 32;
  constexpr std::uint32_t least = 0x80000000, first_nan = (last_signalling_nan<Lane<V>> + 1) >> lower_bits,
                          infinity_word = __builtin_bit_cast(Int<Lane<V>>, infinity<Lane<V>>) >> lower_bits;
  const auto from_least = [](V v) { return bit_cast<Words>(bit_cast<Bits<Words>>(abs(v)) - (infinity_word - least)); };
  const auto lesser = [](Words a, Words b) { return a < b ? a : b; };
  Words smallest = lesser(from_least(x), from_least(y));
  ((smallest = lesser(from_least(more), smallest)), ...);
  const Bits<Words> word = bit_cast<Bits<Words>>(smallest); // unsigned, as differences wrap
  return bit_cast<SignMask<V>>(word & ~(word - (first_nan - (infinity_word - least))));
}
/// The first operand where it is a quiet NaN, the second elsewhere.
template <class V> inline V first_nan(V x, V y) { return select(quiet_nans(x), x, y); }
template <class T> inline bool is_infinite(T x) { return abs(x) == unknown(infinity<T>); }
template <class T> inline bool is_finite(T x) { return int_bits(abs(x)) < int_bits(infinity<T>); }

inline void report(kelStatus& status, kelStatus code) {
  status = code;
  ownRaiseFpException(code);
}

template <class T> inline T domain_error(kelStatus& status) {
  report(status, kelStatusDomain);
  return default_nan<T>();
}
/// A pole: an infinity with the sign bit of `sign`.
template <class T> inline T pole(kelStatus& status, T sign = T(0)) {
  report(status, kelStatusSingularity);
  return with_sign(infinity<T>, sign_of(sign));
}
template <class T> inline T overflow(kelStatus& status, T sign = T(0)) {
  report(status, kelStatusOverflow);
  return with_sign(infinity<T>, sign_of(sign));
}
/// A result below the normal range, already rounded.
template <class T> inline T underflow(kelStatus& status, T result) {
  report(status, kelStatusUnderflow);
  return result;
}

} // namespace kelvm::inline KELVM_BUILD
