// Quotient and reciprocal: the processor's division, correctly rounded, at every accuracy. An integer guess at the
// reciprocal with polynomial or Newton steps, the way without estimate instructions, is slower at every accuracy and
// vector width.
//
// A quotient's own flags are those that its element earns, so Div divides first and looks at the result: what is not an
// ordinary number or a zero from a zero dividend goes to element(), which finds the code.
#include "frame/export.hpp"
#include "kelvm/arith.h"

namespace kelvm::inline KELVM_BUILD::real_division {
namespace {

/// The quotient with its code; the flags are the division's own, but for an exact subnormal result.
template <class T> T quotient(T x, T y, kelStatus& status) {
  const T q = x / y;
  const T magnitude = abs(q);
  if (q != q) {
    if (x == x && y == y) status = kelStatusDomain;
  } else if (magnitude == infinity<T>) {
    if (abs(x) != infinity<T>) status = y == 0 ? kelStatusSingularity : kelStatusOverflow;
  } else if (magnitude <= smallest_normal<T> && x != 0 && abs(y) != infinity<T>) {
    // A result rounded up to the smallest normal number is below it all the same.
    if (magnitude < smallest_normal<T> || abs(x) / smallest_normal<T> < abs(y)) return underflow(status, q);
  }
  return q;
}

/// Whether results may have a code. For a block, the magnitudes tell as 32-bit words, of which the upper one of a
/// double counts: shifted left, and less the smallest that has none, those in doubt are the largest. A zero makes a
/// closer look at single vectors necessary.
template <class V> struct QuotientTest {
  using T = Lane<V>;

  void add(V dividend, V quotient) {
    const Words words = bit_cast<Words>(quotient), above_least = (words + words) - 2 * least;
    farthest = above_least > farthest ? above_least : farthest;
    const V magnitude = abs(quotient);
    const Bits<V> small = below(magnitude, from_bits<T>(bits(smallest_normal<T>) + 1));
    undecided |= (small & -bits(abs(dividend))) | beyond(magnitude, largest_finite<T>);
  }
  bool any() const { return movemask(bit_cast<Bits<V>>((farthest >> 1) + (0x7FFFFFFF - (largest - least)))) != 0; }
  BitMask lanes() const { return movemask(undecided); }

private:
  using Words = Vec<std::uint32_t, sizeof(V) / 4>;
  static constexpr std::uint32_t least = sizeof(T) == 8 ? 0x00100001 : 0x00800001;
  static constexpr std::uint32_t largest = sizeof(T) == 8 ? 0x7FEFFFFF : 0x7F7FFFFF;
  Words farthest{};
  Bits<V> undecided{};
};

template <class T> struct Div : KernelDefaults {
  using Element = T;
  template <class V> using ResultTest = QuotientTest<V>;
  template <class V> static SignMask<V> special(V, V) { return SignMask<V>{}; }
  template <class V> static V formula(V x, V y, ResultTest<V>& test) {
    const V q = x / y;
    test.add(x, q);
    return q;
  }
  static T element(T x, T y, kelStatus& status) { return quotient(x, y, status); }
};

template <class T> struct Inv : KernelDefaults {
  using Element = T;
  static constexpr int vectors_in_flight = 2;
  template <class V> static SignMask<V> special(V x) {
    return outside(abs(x), smallest_normal<T>, 1 / smallest_normal<T>);
  }
  template <class V> static V formula(V x) { return 1 / x; }
  static T element(T x, kelStatus& status) { return quotient(T(1), x, status); }
};

} // namespace

KELVM_BINARY(kelsDiv_32f_A11, Div<float>)
KELVM_BINARY(kelsDiv_32f_A21, Div<float>)
KELVM_BINARY(kelsDiv_32f_A24, Div<float>)
KELVM_BINARY(kelsDiv_64f_A26, Div<double>)
KELVM_BINARY(kelsDiv_64f_A50, Div<double>)
KELVM_BINARY(kelsDiv_64f_A53, Div<double>)
KELVM_UNARY(kelsInv_32f_A11, Inv<float>)
KELVM_UNARY(kelsInv_32f_A21, Inv<float>)
KELVM_UNARY(kelsInv_32f_A24, Inv<float>)
KELVM_UNARY(kelsInv_64f_A26, Inv<double>)
KELVM_UNARY(kelsInv_64f_A50, Inv<double>)
KELVM_UNARY(kelsInv_64f_A53, Inv<double>)

} // namespace kelvm::inline KELVM_BUILD::real_division
