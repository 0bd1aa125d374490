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

/// The undecided lanes of a kernel (its Doubt): one test for all vectors of a block.
struct MidpointDoubt {
  void add(Marks<Native<double>> low, Marks<Native<double>> high) {
    marks |= low | high;
    undecided |= sign_bits(low) | sign_bits(high) << native_lanes<double>;
  }
  bool any() const { return sign_bits(marks) != 0; }
  LaneBits lanes() const { return undecided; }

private:
  Marks<Native<double>> marks{};
  LaneBits undecided = 0;
};

/// narrow() for a correctly rounded member: the values have relative error below 2^-ErrorBits, and the lanes that this
/// leaves undecided are added to `doubt`.
template <int ErrorBits>
inline Native<float> narrow_decided(MidpointDoubt& doubt, Native<double> low, Native<double> high) {
  doubt.add(near_midpoint<ErrorBits>(low), near_midpoint<ErrorBits>(high));
  return narrow(low, high);
}

/// in_double() likewise.
template <int ErrorBits, class F, class V, class... More>
inline V in_double_decided(MidpointDoubt& doubt, F f, V x, More... more) {
  return narrow_decided<ErrorBits>(doubt, f(widen<0>(x), widen<0>(more)...), f(widen<1>(x), widen<1>(more)...));
}

/// head + tail rounded once to float, subnormal or not; head is the sum rounded to double. Rounded to odd, a double
/// keeps what a float needs: Boldo, Melquiond, "Emulation of a FMA and correctly rounded sums", 2008.
inline float round_to_float(HeadTail<double> y) {
  const std::uint64_t head = bits(y.head);
  if (y.tail == 0 || (head & 1) != 0) return float(y.head);
  return float(from_bits<double>((y.tail < 0) == (y.head < 0) ? head + 1 : head - 1));
}
/// The same of a sum whose head is not rounded yet, |head| >= |tail|.
inline float round_sum_to_float(HeadTail<double> y) { return round_to_float(fast_two_sum(y.head, y.tail)); }

} // namespace kelvm::inline KELVM_BUILD
