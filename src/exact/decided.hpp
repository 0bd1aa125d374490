// Correct rounding of float results that are evaluated in double: rounding the double to float gives the correctly
// rounded result unless the double lies so near a midpoint between two floats that its error decides. Such lanes are
// told apart by integer operations on the double's low bits, and go to the member's element(), which computes them more
// accurately. Ziv, "Fast evaluation of elementary mathematical functions with correctly rounded last bit", 1991.
#pragma once

#include "exact/exact.hpp"

namespace kelvm::inline KELVM_BUILD {

/// Marks the doubles within relative error 2^-ErrorBits of a midpoint between two neighbouring normal floats. y must
/// not be zero, and its float not subnormal.
template <int ErrorBits, class V> inline Marks<V> near_midpoint(V y) {
  static_assert(sizeof(Lane<V>) == 8 && ErrorBits > 25 && ErrorBits < 53);
  constexpr std::int64_t below_float = (std::int64_t(1) << 29) - 1; // the fraction bits that a float lacks
  constexpr std::int64_t midpoint = std::int64_t(1) << 28;
  constexpr std::int64_t margin = std::int64_t(1) << (53 - ErrorBits);
  return ((int_bits(y) + (margin - midpoint)) & below_float) - 2 * margin;
}

/// in_double() for a correctly rounded member: f has relative error below 2^-ErrorBits, and the lanes that this leaves
/// undecided are added to `doubtful`.
template <int ErrorBits, class F, class V, class... More>
inline V in_double_decided(LaneBits& doubtful, F f, V x, More... more) {
  if constexpr (lanes<V> == 1) {
    const double y = f(double(x), double(more)...);
    doubtful |= sign_bits(near_midpoint<ErrorBits>(y));
    return float(y);
  } else {
    const Native<double> low = f(widen<0>(x), widen<0>(more)...), high = f(widen<1>(x), widen<1>(more)...);
    doubtful |= sign_bits(near_midpoint<ErrorBits>(low)) | sign_bits(near_midpoint<ErrorBits>(high))
                                                               << lanes<decltype(low)>;
    return narrow(low, high);
  }
}

/// head + tail rounded once to float, subnormal or not; head is the sum rounded to double. Rounded to odd, a double
/// keeps what a float needs: Boldo, Melquiond, "Emulation of a FMA and correctly rounded sums", 2008.
inline float round_to_float(HeadTail<double> y) {
  const std::uint64_t head = bits(y.head);
  if (y.tail == 0 || (head & 1) != 0) return float(y.head);
  return float(from_bits<double>((y.tail < 0) == (y.head < 0) ? head + 1 : head - 1));
}

} // namespace kelvm::inline KELVM_BUILD
