// Correct rounding of float results that are evaluated in double: rounding the double to float gives the correctly
// rounded result unless the double lies so near a midpoint between two floats that its error decides. Such lanes are
// told apart by integer operations on the double's low bits, and go to the function's element(), which computes them
// more accurately. Ziv, "Fast evaluation of elementary mathematical functions with correctly rounded last bit", 1991.
#pragma once

#include "exact/double_word.hpp"

namespace kelvm::inline KELVM_BUILD {

/// The doubles within relative error 2^-ErrorBits of a midpoint between two neighbouring normal floats, told by
/// unsigned integers that end in their low bits. Zero, and values that are subnormal floats exactly, are near none;
/// nothing is said of others whose float is subnormal.
template <int ErrorBits, class B> inline Int<B> near_midpoint(B y) {
  static_assert(ErrorBits > 25 && ErrorBits < 53);
  using L = Lane<B>;
  constexpr L below_float = (L(1) << 29) - 1; // the fraction bits that a float lacks
  constexpr L midpoint = L(1) << 28, margin = L(1) << (53 - ErrorBits);
  return bit_cast<Int<B>>(((y + (margin - midpoint)) & below_float) - 2 * margin);
}

/// The undecided lanes of a kernel (its ResultTest): one test for all vectors of a block.
struct RoundingTest {
  /// The values of the lower half of a float vector and of the upper one.
  template <int ErrorBits> void add(Native<double> low, Native<double> high) {
    using Words = Bits<Native<float>>;
    near_midpoints |= near_midpoint<ErrorBits>(unzip(bit_cast<Words>(low), bit_cast<Words>(high)).first);
    undecided |= movemask(near_midpoint<ErrorBits>(bits(low))) | movemask(near_midpoint<ErrorBits>(bits(high)))
                                                                     << native_lanes<double>;
  }
  bool any() const { return movemask(near_midpoints) != 0; }
  BitMask lanes() const { return undecided; }

private:
  Int<Native<float>> near_midpoints{}; // in an order of their own
  BitMask undecided = 0;
};

/// narrow() for a correctly rounded function: the values have relative error below 2^-ErrorBits, and the lanes that
/// this leaves undecided are added to `test`.
template <int ErrorBits>
inline Native<float> narrow_decided(RoundingTest& test, Native<double> low, Native<double> high) {
  test.add<ErrorBits>(low, high);
  return narrow(low, high);
}

/// in_double() likewise.
template <int ErrorBits, class F, class V, class... More>
inline V in_double_decided(RoundingTest& test, F f, V x, More... more) {
  return narrow_decided<ErrorBits>(test, f(widen<0>(x), widen<0>(more)...), f(widen<1>(x), widen<1>(more)...));
}

/// hi + lo, hi being the sum rounded to nearest, rounded to odd: a double that rounds to float, a subnormal one too, as
/// the exact sum does. Boldo, Melquiond, "Emulation of a FMA and correctly rounded sums: proved algorithms using
/// rounding to odd", 2008.
inline double round_to_odd(DoubleWord<double> y) {
  const std::uint64_t hi = bits(y.hi);
  if (y.lo == 0 || (hi & 1) != 0) return y.hi;
  return from_bits<double>((y.lo < 0) == (y.hi < 0) ? hi + 1 : hi - 1);
}
/// The same rounded once to float.
inline float round_to_float(DoubleWord<double> y) { return float(round_to_odd(y)); }
/// The same of a sum that is not normalised, |hi| >= |lo|.
inline float round_sum_to_float(DoubleWord<double> y) { return round_to_float(normalised(y)); }

} // namespace kelvm::inline KELVM_BUILD
