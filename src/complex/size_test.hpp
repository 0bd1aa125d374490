// Which results of a vector formula may have left the range of the type in between: a test of what comes out, for the
// products and quotients of complex numbers.
#pragma once

#include "frame/kernel.hpp"
#include "simd/constants.hpp"

namespace kelvm::inline KELVM_BUILD {

/// A size of two numbers by one operation: below 2^(2^n - bias), bias that of the exponent field, where both are. It
/// may have the exponent of a NaN, and comparing it raises invalid then.
template <class V> inline V either_size(V x, V y) { return abs(from_bits<V>(bits(x) | bits(y))); }

/// Tells whether all is well: results that are no ordinary numbers where an operand is infinite or a NaN or something
/// may have overflowed, and sizes that are small where a result may have suffered from underflow. For a block the sum
/// of all results and the minimum of the sizes do; zeros are among the small ones, so that the lanes of a single vector
/// are told apart with more care.
template <class V> struct SizeTest {
  using T = Lane<V>;

  void results(Pair<V> z) {
    sum += z.first + z.second;
    undecided |= above(abs(z.first), largest_finite<T>) | above(abs(z.second), largest_finite<T>);
  }
  /// harmful: whether being below the limit, as a zero is, means that the result is undecided.
  void small(V size, T limit, SignMask<V> harmful) {
    least = smaller_of(size, least);
    undecided |= (int_bits(size) - int_bits(splat<V>(limit))) & harmful;
    low = limit;
  }
  bool any() const {
    return kelvm::any(above(abs(sum), largest_finite<T>) | (int_bits(least) - int_bits(splat<V>(low))));
  }
  BitMask lanes() const { return movemask(undecided); }

private:
  V sum = splat<V>(T(-0.0)), least = splat<V>(infinity<T>);
  SignMask<V> undecided{};
  T low = 0;
};

} // namespace kelvm::inline KELVM_BUILD
