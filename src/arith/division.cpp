// Quotient and reciprocal: the processor's division, correctly rounded, at every accuracy. An integer guess at the
// reciprocal with polynomial or Newton steps, the way without estimate instructions, is slower at every accuracy and
// vector width.
//
// A quotient's own flags are those that its element earns, so Div divides first and looks at the result: what is not an
// ordinary number or a zero from a zero dividend goes to element(), which finds the code.
#include "frame/member.hpp"
#include "kelvm/arith.h"
#include "root/root.hpp"

namespace kelvm::inline KELVM_BUILD {
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

template <class T> struct Div : KernelDefaults {
  using Element = T;
  static constexpr bool doubts = true;
  template <class V> static Marks<V> special(V, V) { return Marks<V>{}; }
  template <class V> static V formula(V x, V y, LaneBits& doubtful) {
    const V q = x / y;
    const V magnitude = abs(q);
    const Bits<V> small = (bits(magnitude) - (bits(splat<V>(smallest_normal<T>)) + 1)) & -bits(abs(x));
    doubtful |= sign_bits(small | beyond(magnitude, largest_finite<T>));
    return q;
  }
  static T element(T x, T y, kelStatus& status) { return quotient(x, y, status); }
};

template <class T> struct Inv : KernelDefaults {
  using Element = T;
  template <class V> static Marks<V> special(V x) {
    return outside(abs(x), smallest_normal<T>, 1 / smallest_normal<T>);
  }
  template <class V> static V formula(V x) { return 1 / x; }
  static T element(T x, kelStatus& status) { return quotient(T(1), x, status); }
};

} // namespace
} // namespace kelvm::inline KELVM_BUILD

KELVM_BINARY(kelsDiv_32f_A11, kelvm::Div<float>)
KELVM_BINARY(kelsDiv_32f_A21, kelvm::Div<float>)
KELVM_BINARY(kelsDiv_32f_A24, kelvm::Div<float>)
KELVM_BINARY(kelsDiv_64f_A26, kelvm::Div<double>)
KELVM_BINARY(kelsDiv_64f_A50, kelvm::Div<double>)
KELVM_BINARY(kelsDiv_64f_A53, kelvm::Div<double>)
KELVM_UNARY(kelsInv_32f_A11, kelvm::Inv<float>)
KELVM_UNARY(kelsInv_32f_A21, kelvm::Inv<float>)
KELVM_UNARY(kelsInv_32f_A24, kelvm::Inv<float>)
KELVM_UNARY(kelsInv_64f_A26, kelvm::Inv<double>)
KELVM_UNARY(kelsInv_64f_A50, kelvm::Inv<double>)
KELVM_UNARY(kelsInv_64f_A53, kelvm::Inv<double>)
