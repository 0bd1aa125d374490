// Quotient and reciprocal. A24, A53: the processor's division. Reduced accuracies, where the processor has an estimate
// r of 1 / y (floats; doubles in the AVX-512 build): Newton's steps, each of which squares the error, r + r (1 - y r)
// and at last (x r) (2 - y r).
//
//         steps   r to 2^-14 (AVX-512)       to 1.5 2^-12
//   A11   none    2^-14                      2^-11.4
//   A21   one     Inv 2^-22.9                2^-21.6; Inv 2^-21.9, without fused operations 2^-21.7
//   A26   one     2^-27.9
//   A50   two     2^-51.3, Inv 2^-51.8
//
// What is missing is done by the processor's division; an integer guess at the reciprocal with polynomial or Newton
// steps is slower.
//
// A quotient's own flags are those that its element earns, so Div divides first and looks at the result: what is not an
// ordinary number or a zero from a zero dividend goes to element(), which finds the code.
#include "frame/any_operands.hpp"
#include "frame/edges.hpp"
#include "frame/export.hpp"
#include "kelvm/arith.h"
#include "simd/estimate.hpp"
#include "simd/quick_range.hpp"

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

/// The upper 32 bits of a double with the lower ones all set or not, all bits of a float.
template <class T> constexpr T from_word(std::uint32_t word, bool filled) {
  if constexpr (sizeof(T) == 8)
    return __builtin_bit_cast(T, std::uint64_t(word) << 32 | (filled ? 0xFFFFFFFFu : 0));
  else
    return __builtin_bit_cast(T, word);
}

/// Whether results may have a code: what is not between the least and the largest number that have none, by a margin
/// for what estimates err. By division a NaN operand gives itself, the first of two, and a signalling one its flag;
/// where the quotient is estimated, NaNs are undecided.
template <class V, bool Estimated> struct QuotientTest {
  using T = Lane<V>;

  void add(V dividend, V divisor, V quotient) {
    all.add(quotient);
    if constexpr (!Estimated) {
      const auto nans = sign_mask<V>(dividend != dividend) | sign_mask<V>(divisor != divisor);
      quotient = select(nans, splat<V>(1), quotient);
      all_numbers.add(quotient);
    }
    const V magnitude = abs(quotient);
    undecided |= (below(magnitude, from_word<T>(least, false)) & -bits(abs(dividend))) |
                 beyond(magnitude, from_word<T>(largest, true));
  }
  bool any() const { return !all.passed() && (Estimated || !all_numbers.passed()) && kelvm::any(undecided); }
  BitMask lanes() const { return movemask(undecided); }

private:
  static constexpr std::uint32_t least = sizeof(T) == 8 ? 0x00100001 : 0x00801000;
  static constexpr std::uint32_t largest = sizeof(T) == 8 ? 0x7FEFFFFE : 0x7F7FDFFF;
  MiddleRange<V, true> all, all_numbers; // where the second passes alone there are NaNs
  Bits<V> undecided{};
};

template <class T> struct Div : KernelDefaults {
  using Element = T;
  template <class V> using ResultTest = QuotientTest<V, false>;
  template <class V> static SignMask<V> special(V, V) { return SignMask<V>{}; }
  template <class V> static V formula(V x, V y, ResultTest<V>& test) {
    const V q = x / y;
    test.add(x, y, q);
    return q;
  }
  template <class V> static SignMask<V> nan_lanes(V x, V y) { return quiet_nans(x, y); }
  template <class V> static V nan_result(V x, V y) { return first_nan(x, y); }
  /// Numbers but zero by zero.
  static constexpr kelStatus edge_code = kelStatusSingularity;
  template <class V> static SignMask<V> edge_lanes(V x, V y) {
    return zero_lanes(y) & nonzero(x) & ~above(abs(x), largest_finite<T>);
  }
  template <class V> static V edge_result(V x, V y) {
    return with_sign(splat<V>(infinity<T>), sign_of(x) ^ sign_of(y));
  }
  static T element(T x, T y, kelStatus& status) { return quotient(x, y, status); }
};

template <class T> struct Inv : KernelDefaults, PoleAtZero<0> {
  using Element = T;
  static constexpr int vectors_in_flight = 2;
  template <class V> using QuickTest = MiddleRange<V, true>;
  /// A quiet NaN gives itself.
  template <class V> static SignMask<V> special(V x) {
    return outside(abs(x), smallest_normal<T>, 1 / smallest_normal<T>) & ~quiet_nans(x);
  }
  template <class V> static V formula(V x) { return 1 / x; }
  static T element(T x, kelStatus& status) { return quotient(T(1), x, status); }
};

/// About x / y after so many of Newton's steps, times_x being multiplication by x.
template <int Steps, class V, class F> V newton_quotient(V y, F times_x) {
  V r = reciprocal_estimate(y);
  if constexpr (Steps == 0) {
    return times_x(r);
  } else {
    unrolled<Steps - 1>([&](auto) { r = mul_add(r, sub_mul(splat<V>(1), y, r), r); });
    return times_x(r) * sub_mul(splat<V>(2), y, r);
  }
}

template <class T, int Steps> struct EstimatedDiv : AnyOperands<Div<T>> {
  static constexpr Magnitudes ordinary{0x1p-30, 0x1p30};
  template <class V> using ResultTest = QuotientTest<V, true>;
  template <class V> static V formula(V x, V y, ResultTest<V>& test) {
    const V q = newton_quotient<Steps>(y, [&](V r) { return x * r; });
    test.add(x, y, q);
    return q;
  }
};

template <class T, int Steps> struct EstimatedInv : Inv<T> {
  static constexpr int vectors_in_flight = 4;
  /// So that no step underflows.
  static constexpr T high = sizeof(T) == 8 ? T(0x1p960) : T(0x1p96);
  template <class V> static SignMask<V> special(V x) { return outside(abs(x), smallest_normal<T>, high); }
  template <class V> static V formula(V x) {
    return newton_quotient<Steps>(x, [](V r) { return r; });
  }
};

/// By measurement: on floats, a quotient's step and test together cost more than the divider, but in 32 bytes.
template <class T, int Steps>
inline constexpr bool estimated_quotients_win = has_estimates<T> &&
                                                (Steps == 0 || vector_bytes == 32 || sizeof(T) == 8);

template <class T, int Steps>
using ReducedDiv = std::conditional_t<estimated_quotients_win<T, Steps>, EstimatedDiv<T, Steps>, Div<T>>;
template <class T, int Steps> using ReducedInv = std::conditional_t<has_estimates<T>, EstimatedInv<T, Steps>, Inv<T>>;

} // namespace

KELVM_BINARY(kelsDiv_32f_A11, ReducedDiv<float, 0>)
KELVM_BINARY(kelsDiv_32f_A21, ReducedDiv<float, 1>)
KELVM_BINARY(kelsDiv_32f_A24, Div<float>)
KELVM_BINARY(kelsDiv_64f_A26, ReducedDiv<double, 1>)
KELVM_BINARY(kelsDiv_64f_A50, ReducedDiv<double, 2>)
KELVM_BINARY(kelsDiv_64f_A53, Div<double>)
KELVM_UNARY(kelsInv_32f_A11, ReducedInv<float, 0>)
KELVM_UNARY(kelsInv_32f_A21, ReducedInv<float, 1>)
KELVM_UNARY(kelsInv_32f_A24, Inv<float>)
KELVM_UNARY(kelsInv_64f_A26, ReducedInv<double, 1>)
KELVM_UNARY(kelsInv_64f_A50, ReducedInv<double, 2>)
KELVM_UNARY(kelsInv_64f_A53, Inv<double>)

} // namespace kelvm::inline KELVM_BUILD::real_division
