// Square root, its reciprocal, and x^(3/2).
//
//   Sqrt           the processor's square root where nothing below is said
//   InvSqrt A53    r to 2^-20.3 (root/root.hpp), d = 1 - x r^2 from an exact product: r + r/2 (d + 3/4 d^2 + 5/8 d^3),
//                  the second term to 2^-50 of itself: 0.5000 ulp; without fused operations s = sqrt(x), r = 1 / s cut
//                  to 26 bits, d = 1 - s r and e = x - s^2 by parts: r + r (d + d^2 - e r^2 / 2), 0.5000 ulp
//           A24    r as A21's below, d likewise, r + r d/2 rounded where its error decides: 3/4 d of r d/2 with |d| <
//                  2^-20.5, and three roundings, 2^-20.4. Without fused operations r = 1 / sqrt(x) in single precision,
//                  to 1.5 2^-24 as its two roundings never are at their worst together, and the sum in double: 3/8 d^2
//                  with |d| < 3 2^-24, and less than two roundings: 2^-46.2
//   Pow3o2  A53    s = sqrt(x), e = x - s^2 exactly; x s + s e / 2 with one rounding, or by parts: 0.5000 ulp
//           A24    the same in single precision, rounded where its error decides: the next term, 2^-23.4 of s e / 2,
//                  and one rounding. Without fused operations s (3/2 x - 1/2 s^2) in double, the difference exact:
//                  with s to 2^-24, 3/2 2^-48 and one rounding, 2^-47.3
//
// Reduced accuracies, where the processor has an estimate r of x^(-1/2) (floats; doubles in the AVX-512 build):
// s = x r, e = 1 - s r, and r, s or x s times terms of (1 - e)^(-1/2):
//
//         terms                        r to 2^-14 (AVX-512)    to 1.5 2^-12
//   A11   1                            2^-14                   2^-11.4
//   A21   1 + e/2 = 3/2 - s/2 r        2^-22.3                 2^-21.3, Pow3o2 2^-21.1
//   A26   1 + e/2                      2^-27.4
//   A50   1 + e/2 + 3/8 e^2 + 5/16 e^3 2^-51.9, Pow3o2 2^-51.3
//
// Doubles elsewhere: InvSqrt A50 r to 2^-20.3, r + r d (1/2 + 3/8 d); A26 the first guess and one
// polynomial, 2^-30.3; Pow3o2 two operations, each rounded.
#include "exact/double_word.hpp"
#include "exact/rounding_test.hpp"
#include "frame/edges.hpp"
#include "frame/export.hpp"
#include "kelvm/root.h"
#include "root/estimated_root.hpp"
#include "root/root.hpp"
#include "root/scaled.hpp"
#include "simd/quick_range.hpp"

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

// --- the processor's estimate ----------------------------------------------------------------------------------------

/// A zero goes the way of ordinary arguments where estimates know subnormals. Elsewhere it gives itself, as a NaN does:
/// it would cost the others a minimum.
template <class T, int Terms> struct EstimatedSqrt : Sqrt<T> {
  template <class V> using QuickTest = MiddleRange<V>;
  template <class V> static SignMask<V> special(V x) {
    if constexpr (estimates_know_subnormals)
      return int_bits(x) | bit_cast<SignMask<V>>(beyond(x, largest_finite<T>));
    else
      return outside(x, smallest_normal<T>, largest_finite<T>);
  }
  template <class V> static V formula(V x) {
    const EstimatedRoot<V> root =
        estimates_know_subnormals ? estimated_root(x) : EstimatedRoot<V>(x, inverse_sqrt_estimate(x));
    return root.template corrected<Terms>(root.s);
  }
  template <class V> static SignMask<V> nan_lanes(V x) {
    if constexpr (estimates_know_subnormals) return quiet_nans(x);
    const Bits<V> magnitude = bits(x) + bits(x); // of a zero 0, of a quiet NaN at least least_nan
    constexpr auto least_nan = Lane<Bits<V>>(last_signalling_nan<T> + 1) << 1;
    return bit_cast<SignMask<V>>((magnitude - 1) & ~(magnitude - least_nan));
  }
};
template <class T, int Terms>
using ReducedSqrt = std::conditional_t<has_estimates<T>, EstimatedSqrt<T, Terms>, Sqrt<T>>;

// --- reciprocal square root ----------------------------------------------------------------------------------------

/// x^(-1/2) for x >= 2^-960.
template <class V> DoubleWord<V> inverse_sqrt_parts(V x) {
  const V s = sqrt(x);
  if constexpr (has_fused) {
    const V r = 1 / s, d = sub_mul(splat<V>(1), s, r), e = sub_mul(x, s, s);
    return {r, r * sub_mul(d, 0.5 * r, e * r)};
  } else {
    const V r = head_of(1 / s);
    const V s_head = head_of(s), s_tail = s - s_head;
    const V d = (1 - s_head * r) - s_tail * r;
    const V e = (x - s_head * s_head) - s_tail * (s + s_head);
    return {r, r * ((d + d * d) - (0.5 * r) * (e * r))};
  }
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
    return mul_add(r * d, mul_add(splat<V>(0.375), d, splat<V>(0.5)), r);
  }
};
struct A26 {
  using Element = double;
  template <class V> static V inverse_sqrt(V x) { return inverse_root<2>(x, inverse_sqrt_26); }
};
template <class T, int Terms> struct Estimated {
  using Element = T;
  template <class V> static V inverse_sqrt(V x) {
    const EstimatedRoot<V> root(x, inverse_sqrt_estimate(x));
    return root.template corrected<Terms>(root.r);
  }
};
template <class T, int Terms, class Otherwise>
using Reduced = std::conditional_t<has_estimates<T>, Estimated<T, Terms>, Otherwise>;

/// 1 - x r^2 for r about x^(-1/2), with an exact product: to about 2^-52 of itself, floats 2^-23.
template <class V> V exact_residual(V x, V r) {
  const DoubleWord<V> s = two_product(x, r);
  return sub_mul(sub_mul(splat<V>(1), s.hi, r), s.lo, r);
}

template <class P> struct InvSqrt : KernelDefaults, PoleAtZero<0> {
  using Element = typename P::Element;
  template <class V> using QuickTest = MiddleRange<V>;
  /// A quiet NaN gives itself: its estimate, or the residual of any other guess, is that NaN.
  template <class V> static SignMask<V> special(V x) {
    return outside(x, smallest_normal<Element>, largest_finite<Element>) & ~quiet_nans(x);
  }
  template <class V> static V formula(V x) { return P::inverse_sqrt(x); }
  static Element element(Element x, kelStatus& status) {
    return inverse_sqrt_element(
        x, status, [](Element subnormal) { return formula(subnormal * Element(0x1p60)) * Element(0x1p30); });
  }
};

struct InvSqrt64A53 : KernelDefaults, PoleAtZero<0> {
  using Element = double;
  static constexpr int vectors_in_flight = few_vectors_in_flight;
  template <class V> using QuickTest = MiddleRange<V>;
  template <class V> static SignMask<V> special(V x) { return outside(x, 0x1p-960, largest_finite<double>); }
  template <class V> static V formula(V x) {
    if constexpr (has_fused) {
      const V r = inverse_root<2>(x, inverse_sqrt_20), d = exact_residual(x, r);
      const V series = mul_add(d, mul_add(d, splat<V>(0.625), splat<V>(0.75)), splat<V>(1));
      return mul_add(halved(r) * d, series, r);
    } else {
      const DoubleWord<V> y = inverse_sqrt_parts(x);
      return rounded(y);
    }
  }
  static double element(double x, kelStatus& status) {
    return inverse_sqrt_element(x, status, [](double small) { return formula(small * 0x1p400) * 0x1p200; });
  }
};

/// y + c rounded to nearest, where c is known to 2^-19 of itself or is below 2^-27 y, too small to matter: a c a little
/// larger and one a little smaller give the same sum. Lanes where they do not are undecided. What is decided has the
/// same bits whatever y and c came from, a processor's estimate too.
struct FusedRounding {
  template <class V> V sum(V y, V c) {
    const V up = mul_add(c, splat<V>(1 + 0x1p-19f), y), down = mul_add(c, splat<V>(1 - 0x1p-19f), y);
    differing |= int_bits(up) ^ int_bits(down);
    return up;
  }
  bool any() const { return lanes() != 0; }
  BitMask lanes() const { return movemask(-differing); }

private:
  Int<Native<float>> differing{}; // not negative
};

struct InvSqrt32A24 : KernelDefaults, PoleAtZero<0> {
  using Element = float;
  static constexpr int vectors_in_flight = few_vectors_in_flight;
  template <class V> using ResultTest = std::conditional_t<has_fused, FusedRounding, RoundingTest>;
  template <class V> using QuickTest = MiddleRange<V>;
  template <class V> static SignMask<V> special(V x) {
    return outside(x, smallest_normal<float>, largest_finite<float>);
  }
  template <class V> static V formula(V x, RoundingTest& test) {
    return in_double_decided<46>(
        test, [](auto x, auto r) { return r + (0.5 * r) * residual<2>(x, r); }, x, 1 / sqrt(x));
  }
  template <class V> static V formula(V x, FusedRounding& test) {
    const V r = Estimated<float, 1>::inverse_sqrt(x);
    return test.sum(r, halved(r) * exact_residual(x, r));
  }
  static float element(float x, kelStatus& status) {
    return inverse_sqrt_element(x, status, [](float x) { return round_sum_to_float(inverse_sqrt_parts(double(x))); });
  }
};

// --- x^(3/2) -------------------------------------------------------------------------------------------------------

/// x^(3/2) for x in [2^-640, 2^680] and zero.
template <class V> DoubleWord<V> power_3_2_parts(V x) {
  const V s = sqrt(x);
  if constexpr (has_fused) {
    const DoubleWord<V> product = two_product(x, s);
    return {product.hi, mul_add(sub_mul(x, s, s), halved(s), product.lo)};
  } else {
    const V s_head = head_of(s), x_head = head_of(x);
    const V s_tail = s - s_head, x_tail = x - x_head;
    const V e = (x - s_head * s_head) - s_tail * (s + s_head);
    return {x_head * s_head, (x_head * s_tail + x_tail * s) + (0.5 * e) * s};
  }
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
  template <class V> using QuickTest = MiddleRange<V>;
  template <class V> static SignMask<V> special(V x) { return outside_but_plus_zero(x, low, high); }
  template <class V> static V formula(V x) { return x * sqrt(x); }
  static T element(T x, kelStatus& status) { return power_3_2_element(x, status); }
};

template <class T, int Terms> struct EstimatedPow3o2 : Pow3o2<T> {
  static constexpr int vectors_in_flight = 4;
  template <class V> static V formula(V x) {
    const EstimatedRoot<V> root = estimated_root(x);
    return root.template corrected<Terms>(x * root.s);
  }
};
template <class T, int Terms>
using ReducedPow3o2 = std::conditional_t<has_estimates<T>, EstimatedPow3o2<T, Terms>, Pow3o2<T>>;

struct Pow3o2_64A53 : Pow3o2<double> {
  static constexpr double low = 0x1p-600; // the product of a root and its residual, too, is normal
  template <class V> static SignMask<V> special(V x) { return outside_but_plus_zero(x, low, high); }
  template <class V> static V formula(V x) {
    if constexpr (has_fused) {
      const V s = sqrt(x);
      return mul_add(x, s, sub_mul(x, s, s) * halved(s));
    } else {
      const DoubleWord<V> y = power_3_2_parts(x);
      return rounded(y);
    }
  }
};

struct Pow3o2_32A24 : Pow3o2<float> {
  static constexpr float low = has_fused ? 0x1p-52f : Pow3o2<float>::low; // exact products
  template <class V> using QuickTest = QuickRange<V, -52, false>;
  template <class V> using ResultTest = std::conditional_t<has_fused, FusedRounding, RoundingTest>;
  template <class V> static SignMask<V> special(V x) { return outside_but_plus_zero(x, low, high); }
  template <class V> static V formula(V x, RoundingTest& test) {
    return in_double_decided<47>(
        test, [](auto x, auto s) { return s * (1.5 * x - 0.5 * (s * s)); }, x, sqrt(x));
  }
  template <class V> static V formula(V x, FusedRounding& test) {
    const DoubleWord<V> y = power_3_2_parts(x);
    return test.sum(y.hi, y.lo);
  }
};

} // namespace

KELVM_UNARY(kelsSqrt_32f_A11, ReducedSqrt<float, 0>)
KELVM_UNARY(kelsSqrt_32f_A21, ReducedSqrt<float, 1>)
KELVM_UNARY(kelsSqrt_32f_A24, Sqrt<float>)
KELVM_UNARY(kelsSqrt_64f_A26, ReducedSqrt<double, 1>)
KELVM_UNARY(kelsSqrt_64f_A50, ReducedSqrt<double, 3>)
KELVM_UNARY(kelsSqrt_64f_A53, Sqrt<double>)

KELVM_UNARY(kelsInvSqrt_32f_A11, InvSqrt<Estimated<float, 0>>)
KELVM_UNARY(kelsInvSqrt_32f_A21, InvSqrt<Estimated<float, 1>>)
KELVM_UNARY(kelsInvSqrt_32f_A24, InvSqrt32A24)
KELVM_UNARY(kelsInvSqrt_64f_A26, InvSqrt<Reduced<double, 1, A26>>)
KELVM_UNARY(kelsInvSqrt_64f_A50, InvSqrt<Reduced<double, 3, A50>>)
KELVM_UNARY(kelsInvSqrt_64f_A53, InvSqrt64A53)

KELVM_UNARY(kelsPow3o2_32f_A11, ReducedPow3o2<float, 0>)
KELVM_UNARY(kelsPow3o2_32f_A21, ReducedPow3o2<float, 1>)
KELVM_UNARY(kelsPow3o2_32f_A24, Pow3o2_32A24)
KELVM_UNARY(kelsPow3o2_64f_A26, ReducedPow3o2<double, 1>)
KELVM_UNARY(kelsPow3o2_64f_A50, ReducedPow3o2<double, 3>)
KELVM_UNARY(kelsPow3o2_64f_A53, Pow3o2_64A53)

} // namespace kelvm::inline KELVM_BUILD::square_roots
