// Square root, its reciprocal, and x^(3/2).
//
//   Sqrt           the processor's square root, at every accuracy
//   InvSqrt A53    s = sqrt(x), r = 1 / s cut to 26 bits, d = 1 - s r and e = x - s^2 exactly, by parts:
//                  r + r (d + d^2 - e r^2 / 2), rounded in its last sum: 0.5000 ulp
//           A50    r to 2^-20.3 (root/root.hpp), r + r (d/2 + 3/8 d^2)
//           A26    the first guess and one polynomial: 2^-30.3; A11 the same: 2^-15.2
//           A24    r = 1 / sqrt(x) in single precision, r + r d/2 in double: 2^-47.3, rounded where that decides
//   Pow3o2  A53    s = sqrt(x) in two parts, e = x - s^2 exactly; x s + s e / 2: 0.5000 ulp
//           A24    s = sqrt(x) in single precision, s (3/2 x - 1/2 s^2) in double: 2^-47.4, rounded where that decides
//   InvSqrt A21, Pow3o2 A50 A26 A21 A11: two operations, each rounded
#include "exact/double_word.hpp"
#include "exact/rounding_test.hpp"
#include "frame/export.hpp"
#include "kelvm/root.h"
#include "root/root.hpp"
#include "root/scaled.hpp"

namespace kelvm::inline KELVM_BUILD::square_roots {
namespace {

// --- square root ---------------------------------------------------------------------------------------------------

template <class T> T sqrt_element(T x, kelStatus& status) {
  if (is_nan(x)) return x + x;
  if (x < 0) return domain_error<T>(status);
  return sqrt(x);
}

template <class T> struct Sqrt : KernelDefaults {
  using Element = T;
  /// The sign bit set, and another bit as well.
  template <class V> static SignMask<V> special(V x) { return bit_cast<SignMask<V>>(bits(x) & (bits(x) - 1)); }
  template <class V> static V formula(V x) { return sqrt(x); }
  static T element(T x, kelStatus& status) { return sqrt_element(x, status); }
};

// --- reciprocal square root ----------------------------------------------------------------------------------------

/// x^(-1/2) for x >= 2^-960.
template <class V> DoubleWord<V> inverse_sqrt_parts(V x) {
  const V s = sqrt(x);
  const V r = head_of(1 / s);
  const V s_head = head_of(s), s_tail = s - s_head;
  const V d = (1 - s_head * r) - s_tail * r;
  const V e = (x - s_head * s_head) - s_tail * (s + s_head);
  return {r, r * ((d + d * d) - (0.5 * r) * (e * r))};
}

/// The elements that have no ordinary result; scaled(x) is called for the others.
template <class T, class F> T inverse_sqrt_element(T x, kelStatus& status, F scaled) {
  if (is_nan(x)) return x + x;
  if (x == 0) return pole(status, x);
  if (x < 0) return domain_error<T>(status);
  if (x == infinity<T>) return 0;
  return scaled(x);
}

struct A50 {
  using Element = double;
  template <class V> static V inverse_sqrt(V x) {
    const V r = inverse_root<2>(x, inverse_sqrt_20);
    const V d = residual<2>(x, r);
    return r + r * (d * (0.5 + 0.375 * d));
  }
};
struct A26 {
  using Element = double;
  template <class V> static V inverse_sqrt(V x) { return inverse_root<2>(x, inverse_sqrt_26); }
};
struct A21 {
  using Element = float;
  template <class V> static V inverse_sqrt(V x) { return 1 / sqrt(x); }
};
struct A11 {
  using Element = float;
  template <class V> static V inverse_sqrt(V x) { return inverse_root<2>(x, inverse_sqrt_11); }
};

template <class P> struct InvSqrt : KernelDefaults {
  using Element = typename P::Element;
  template <class V> static SignMask<V> special(V x) {
    return outside(x, smallest_normal<Element>, largest_finite<Element>);
  }
  template <class V> static V formula(V x) { return P::inverse_sqrt(x); }
  static Element element(Element x, kelStatus& status) {
    return inverse_sqrt_element(
        x, status, [](Element subnormal) { return formula(subnormal * Element(0x1p60)) * Element(0x1p30); });
  }
};

struct InvSqrt64A53 : KernelDefaults {
  using Element = double;
  static constexpr int vectors_in_flight = 2;
  template <class V> static SignMask<V> special(V x) { return outside(x, 0x1p-960, largest_finite<double>); }
  template <class V> static V formula(V x) {
    const DoubleWord<V> y = inverse_sqrt_parts(x);
    return rounded(y);
  }
  static double element(double x, kelStatus& status) {
    return inverse_sqrt_element(x, status, [](double small) { return formula(small * 0x1p400) * 0x1p200; });
  }
};

struct InvSqrt32A24 : KernelDefaults {
  using Element = float;
  static constexpr int vectors_in_flight = few_vectors_in_flight;
  template <class V> using ResultTest = RoundingTest;
  template <class V> static SignMask<V> special(V x) {
    return outside(x, smallest_normal<float>, largest_finite<float>);
  }
  template <class V> static V formula(V x, RoundingTest& test) {
    return in_double_decided<47>(
        test, [](auto x, auto r) { return r + (0.5 * r) * residual<2>(x, r); }, x, 1 / sqrt(x));
  }
  static float element(float x, kelStatus& status) {
    return inverse_sqrt_element(x, status, [](float x) { return round_sum_to_float(inverse_sqrt_parts(double(x))); });
  }
};

// --- x^(3/2) -------------------------------------------------------------------------------------------------------

/// x^(3/2) for x in [2^-640, 2^680] and zero.
template <class V> DoubleWord<V> power_3_2_parts(V x) {
  const V s = sqrt(x);
  const V s_head = head_of(s), x_head = head_of(x);
  const V s_tail = s - s_head, x_tail = x - x_head;
  const V e = (x - s_head * s_head) - s_tail * (s + s_head);
  return {x_head * s_head, (x_head * s_tail + x_tail * s) + (0.5 * e) * s};
}

/// The complete function.
double power_3_2_element(double x, kelStatus& status) {
  if (is_nan(x)) return x + x;
  if (x < 0) return domain_error<double>(status);
  if (x == 0 || x == infinity<double>) return abs(x);
  return x > 1 ? scaled_result(power_3_2_parts(x * 0x1p-512), 0x1p768, status)
               : scaled_result(power_3_2_parts(x * 0x1p512), 0x1p-768, status);
}
float power_3_2_element(float x, kelStatus& status) {
  if (is_nan(x)) return x + x;
  if (x < 0) return domain_error<float>(status);
  if (x == 0 || x == infinity<float>) return abs(x);
  return to_float(power_3_2_parts(double(x)), status);
}

template <class T> struct Pow3o2 : KernelDefaults {
  using Element = T;
  static constexpr int vectors_in_flight = 2;
  /// Within: neither the result nor a step towards it leaves the normal range.
  static constexpr T low = sizeof(T) == 8 ? T(0x1p-640) : T(0x1p-83);
  static constexpr T high = sizeof(T) == 8 ? T(0x1p680) : T(0x1p85);
  template <class V> static SignMask<V> special(V x) { return outside_but_plus_zero(x, low, high); }
  template <class V> static V formula(V x) { return x * sqrt(x); }
  static T element(T x, kelStatus& status) { return power_3_2_element(x, status); }
};

struct Pow3o2_64A53 : Pow3o2<double> {
  template <class V> static V formula(V x) {
    const DoubleWord<V> y = power_3_2_parts(x);
    return rounded(y);
  }
};

struct Pow3o2_32A24 : Pow3o2<float> {
  template <class V> using ResultTest = RoundingTest;
  template <class V> static V formula(V x, RoundingTest& test) {
    return in_double_decided<47>(
        test, [](auto x, auto s) { return s * (1.5 * x - 0.5 * (s * s)); }, x, sqrt(x));
  }
};

} // namespace

KELVM_UNARY(kelsSqrt_32f_A11, Sqrt<float>)
KELVM_UNARY(kelsSqrt_32f_A21, Sqrt<float>)
KELVM_UNARY(kelsSqrt_32f_A24, Sqrt<float>)
KELVM_UNARY(kelsSqrt_64f_A26, Sqrt<double>)
KELVM_UNARY(kelsSqrt_64f_A50, Sqrt<double>)
KELVM_UNARY(kelsSqrt_64f_A53, Sqrt<double>)

KELVM_UNARY(kelsInvSqrt_32f_A11, InvSqrt<A11>)
KELVM_UNARY(kelsInvSqrt_32f_A21, InvSqrt<A21>)
KELVM_UNARY(kelsInvSqrt_32f_A24, InvSqrt32A24)
KELVM_UNARY(kelsInvSqrt_64f_A26, InvSqrt<A26>)
KELVM_UNARY(kelsInvSqrt_64f_A50, InvSqrt<A50>)
KELVM_UNARY(kelsInvSqrt_64f_A53, InvSqrt64A53)

KELVM_UNARY(kelsPow3o2_32f_A11, Pow3o2<float>)
KELVM_UNARY(kelsPow3o2_32f_A21, Pow3o2<float>)
KELVM_UNARY(kelsPow3o2_32f_A24, Pow3o2_32A24)
KELVM_UNARY(kelsPow3o2_64f_A26, Pow3o2<double>)
KELVM_UNARY(kelsPow3o2_64f_A50, Pow3o2<double>)
KELVM_UNARY(kelsPow3o2_64f_A53, Pow3o2_64A53)

} // namespace kelvm::inline KELVM_BUILD::square_roots
