// Which results of a vector formula may have left the range of the type in between: a test of what comes out, for the
// products and quotients of complex numbers.
#pragma once

#include "frame/frame.hpp"
#include "simd/constants.hpp"

namespace kelvm::inline KELVM_BUILD {

template <class V> inline SignMask<V> nonzero(V x) { return -int_bits(abs(x)); }

/// Tells by two sizes whether all is well: one that is no ordinary number where an operand is infinite or a NaN or
/// something may overflow, and one that is small where a result may have suffered from underflow. For a block their sum
/// and minimum do; zeros are among the small ones, so that the lanes of a single vector are told apart with more care.
template <class V> struct SizeTest {
  using T = Lane<V>;

  void large(V size, T limit) {
    sum += size;
    undecided |= above(size, limit);
    high = limit;
  }
  /// harmful: whether being below the limit, as a zero is, means that the result is undecided.
  void small(V size, T limit, SignMask<V> harmful) {
    least = smaller_of(size, least);
    undecided |= (int_bits(size) - int_bits(splat<V>(limit))) & harmful;
    low = limit;
  }
  bool any() const { return kelvm::any(above(abs(sum), high) | (int_bits(least) - int_bits(splat<V>(low)))); }
  BitMask lanes() const { return movemask(undecided); }

private:
  V sum = splat<V>(T(-0.0)), least = splat<V>(infinity<T>);
  SignMask<V> undecided{};
  T high = largest_finite<T>, low = 0;
};
template <class V> inline V size_of(Pair<V> z) { return abs(z.first) + abs(z.second); }

} // namespace kelvm::inline KELVM_BUILD
