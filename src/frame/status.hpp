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
template <class T> inline bool is_infinite(T x) { return abs(x) == infinity<T>; }
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
