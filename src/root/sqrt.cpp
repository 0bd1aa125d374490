// Square root, its reciprocal, and x^(3/2).
//
//   Sqrt           the processor's square root where nothing below is said
//   InvSqrt A53    s = sqrt(x), r = 1 / s, d = 1 - s r and e = x - s^2 exactly: r + r (d - e r^2 / 2), rounded in its
//                  last sum: 0.5000 ulp; without fused operations by parts, r cut to 26 bits, and d + d^2 for d
//           A24    r as A21's below, d = 1 - x r^2 from an exact product, r + r d/2 rounded where its error, 2^-20.5 of
//                  r d/2, decides; without fused operations r = 1 / sqrt(x) in single precision and the sum in double,
//                  2^-47.3
//   Pow3o2  A53    s = sqrt(x) in two parts, e = x - s^2 exactly; x s + s e / 2: 0.5000 ulp
//           A24    the same in single precision, 2^-47.4, rounded where that decides; without fused operations
//                  s (3/2 x - 1/2 s^2) in double
//
// Reduced accuracies, where the processor has an estimate r of x^(-1/2) (floats; doubles in the AVX-512 build):
// s = x r, e = 1 - s r, and r, s or x s times terms of (1 - e)^(-1/2):
//
//         terms                        r to 2^-14 (AVX-512)    to 1.5 2^-12
//   A11   1                            2^-14                   2^-11.4
//   A21   1 + e/2                      2^-22.5                 2^-21.5, Pow3o2 2^-21.3
//   A26   1 + e/2                      2^-27.4
//   A50   1 + e/2 + 3/8 e^2 + 5/16 e^3 2^-51.9, Pow3o2 2^-51.3
//
// Doubles elsewhere: InvSqrt A50 r to 2^-20.3 (root/root.hpp), r + r (d/2 + 3/8 d^2); A26 the first guess and one
// polynomial, 2^-30.3; Pow3o2 two operations, each rounded.
#include "exact/double_word.hpp"
#include "exact/rounding_test.hpp"
#include "frame/export.hpp"
#include "frame/range_test.hpp"
#include "kelvm/root.h"
#include "root/root.hpp"
#include "root/scaled.hpp"
#include "simd/estimate.hpp"

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

/// An estimate r of x^(-1/2), s = x r, and the residual e = 1 - s r, so that (1 - e)^(-1/2) corrects both.
template <class V> struct EstimatedRoot {
  V r, s, e;
  EstimatedRoot(V x, V estimate) : r(estimate), s(x * r), e(sub_mul(splat<V>(1), s, r)) {}

  /// y (1 - e)^(-1/2), by so many terms of its series.
  template <int Terms> V corrected(V y) const {
    if constexpr (Terms == 0)
      return y;
    else if constexpr (Terms == 1)
      return mul_add(y, V(Lane<V>(0.5) * e), y);
    else
      return mul_add(y * e, mul_add(e, mul_add(e, splat<V>(0.3125), splat<V>(0.375)), splat<V>(0.5)), y);
  }
};

/// The same for a zero, too, which has a huge r and s = 0.
template <class V> EstimatedRoot<V> estimated_root(V x) {
  return {x, smaller_of(inverse_sqrt_estimate(x), splat<V>(largest_finite<Lane<V>>))};
}

/// The lanes with x neither zero nor in an interval, by x itself, though any x goes into the formula. A zero makes a
/// closer look at the vectors of a block necessary.
template <class V, std::uint32_t Least, std::uint32_t Largest> struct IntervalTest {
  using T = Lane<V>;

  void add(V x) {
    range.add(bit_cast<typename Range::Words>(x));
    undecided |= outside_but_plus_zero(x, from_word<T>(Least, false), from_word<T>(Largest, true));
  }
  bool any() const { return range.outside(); }
  BitMask lanes() const { return movemask(undecided); }

private:
  using Range = WordRange<V, Least, Largest>;
  Range range;
  SignMask<V> undecided{};
};

/// What the estimated root covers: where estimates know subnormals two operations tell before, elsewhere two after.
template <class T> struct SqrtOfSubnormals : Sqrt<T> {
  template <class V> static SignMask<V> special(V x) {
    return int_bits(x) | bit_cast<SignMask<V>>(beyond(x, largest_finite<T>));
  }
};
template <class T> struct SqrtOfNormals : AnyOperands<Sqrt<T>> {
  static constexpr Magnitudes quiet_magnitudes{0x1p-40, 0x1p60, false};
  template <class V> using ResultTest = IntervalTest<V, 0x00800000, 0x7F7FFFFF>;
};
template <class T, int Terms>
struct EstimatedSqrt : std::conditional_t<estimates_know_subnormals, SqrtOfSubnormals<T>, SqrtOfNormals<T>> {
  template <class V, class... Test> static V formula(V x, Test&... test) {
    (test.add(x), ...);
    const EstimatedRoot<V> root = estimated_root(x);
    return root.template corrected<Terms>(root.s);
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
    return r + r * (d * (0.5 + 0.375 * d));
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

struct InvSqrt32A24 : KernelDefaults {
  using Element = float;
  static constexpr int vectors_in_flight = few_vectors_in_flight;
  template <class V> using ResultTest = std::conditional_t<has_fused, FusedRounding, RoundingTest>;
  template <class V> static SignMask<V> special(V x) {
    return outside(x, smallest_normal<float>, largest_finite<float>);
  }
  template <class V> static V formula(V x, RoundingTest& test) {
    return in_double_decided<47>(
        test, [](auto x, auto r) { return r + (0.5 * r) * residual<2>(x, r); }, x, 1 / sqrt(x));
  }
  template <class V> static V formula(V x, FusedRounding& test) {
    const V r = Estimated<float, 1>::inverse_sqrt(x);
    const DoubleWord<V> s = two_product(x, r);
    const V d = sub_mul(sub_mul(splat<V>(1), s.hi, r), s.lo, r);
    return test.sum(r, (0.5f * r) * d);
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
    return {product.hi, mul_add(0.5 * sub_mul(x, s, s), s, product.lo)};
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
  template <class V> static SignMask<V> special(V x) { return outside_but_plus_zero(x, low, high); }
  template <class V> static V formula(V x) { return x * sqrt(x); }
  static T element(T x, kelStatus& status) { return power_3_2_element(x, status); }
};

template <class T, int Terms> struct EstimatedPow3o2 : AnyOperands<Pow3o2<T>> {
  static constexpr int vectors_in_flight = 4;
  static constexpr Magnitudes quiet_magnitudes{0x1p-40, 0x1p60, false};
  template <class V> static SignMask<V> special(V x) {
    return flags_stay ? outside(x, Pow3o2<T>::low, Pow3o2<T>::high) : SignMask<V>{};
  }
  template <class V>
  using ResultTest = IntervalTest<V, sizeof(T) == 8 ? 0x17F00000 : 0x16000000,
                                  sizeof(T) == 8 ? 0x6A6FFFFF : 0x69FFFFFF>; // 2^-640 to 2^680, 2^-83 to 2^85
  template <class V> static V formula(V x, ResultTest<V>& test) {
    test.add(x);
    const EstimatedRoot<V> root = estimated_root(x);
    return root.template corrected<Terms>(x * root.s);
  }
};
template <class T, int Terms>
using ReducedPow3o2 = std::conditional_t<has_estimates<T>, EstimatedPow3o2<T, Terms>, Pow3o2<T>>;

struct Pow3o2_64A53 : Pow3o2<double> {
  template <class V> static V formula(V x) {
    const DoubleWord<V> y = power_3_2_parts(x);
    return rounded(y);
  }
};

struct Pow3o2_32A24 : Pow3o2<float> {
  static constexpr float low = has_fused ? 0x1p-52f : Pow3o2<float>::low; // exact products
  template <class V> using ResultTest = std::conditional_t<has_fused, FusedRounding, RoundingTest>;
  template <class V> static SignMask<V> special(V x) { return outside_but_plus_zero(x, low, high); }
  template <class V> static V formula(V x, RoundingTest& test) {
    return in_double_decided<47>(
        test, [](auto x, auto s) { return s * (1.5 * x - 0.5 * (s * s)); }, x, sqrt(x));
  }
  template <class V> static V formula(V x, FusedRounding& test) {
    const V s = sqrt(x);
    const DoubleWord<V> product = two_product(x, s);
    return test.sum(product.hi, mul_add(0.5f * sub_mul(x, s, s), s, product.lo));
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
