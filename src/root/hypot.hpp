// sqrt(x^2 + y^2), with the processor's square root where nothing else is said.
//
//   A53   every factor in two parts, the square root as a double-word: 0.5015 ulp
//   A24   in double: exact squares, a sum and a root: 3/2 2^-53, rounded where 2^-51 decides
//   A50, A26, A21, A11: sqrt(x^2 + y^2), each operation rounded: at most 1.25 ulp. A26 in the AVX-512 build takes the
//         square root from the processor's estimate, as Sqrt of that accuracy does: 2^-27.4
//
// Only the larger argument is tested. The square of the other may underflow where it no longer counts; the frame takes
// that flag back.
#pragma once

#include "exact/double_word.hpp"
#include "exact/rounding_test.hpp"
#include "frame/any_operands.hpp"
#include "frame/kernel.hpp"
#include "root/estimated_root.hpp"
#include "root/root.hpp"
#include "root/scaled.hpp"
#include "simd/ordered.hpp"
#include "simd/quick_range.hpp"

namespace kelvm::inline KELVM_BUILD::hypotenuse {

/// For non-negative arguments of which the larger is in [2^-480, 2^500], or both are zero.
template <class V> DoubleWord<V> hypot_parts(V x, V y) {
  const V x_head = head_of(x), y_head = head_of(y);
  return square_root(x_head * x_head, y_head * y_head, (x - x_head) * (x + x_head) + (y - y_head) * (y + y_head));
}

/// The pairs of magnitudes of which one is above high, or both are below low and not both zero.
template <class V> SignMask<V> larger_outside(V x, V y, Lane<V> low, Lane<V> high) {
  if constexpr (sizeof(Lane<V>) == 4) // of 32 bits, every instruction set has a maximum of integers
    return outside_but_zero(from_bits<V>(bits(x) > bits(y) ? bits(x) : bits(y)), low, high);
  return bit_cast<SignMask<V>>((below(x, low) & below(y, low) & -(bits(x) | bits(y))) | beyond(x, high) |
                               beyond(y, high));
}

inline double hypot_element(double x, double y, kelStatus& status) {
  x = abs(x), y = abs(y);
  if (x == infinity<double> || y == infinity<double>) return infinity<double>;
  if (is_nan(x) || is_nan(y)) return ordered_sum(x, y);
  return x > 1 || y > 1 ? scaled_result(hypot_parts(x * 0x1p-600, y * 0x1p-600), 0x1p600, status)
                        : scaled_result(hypot_parts(x * 0x1p600, y * 0x1p600), 0x1p-600, status);
}
inline float hypot_element(float x, float y, kelStatus& status) {
  x = abs(x), y = abs(y);
  if (x == infinity<float> || y == infinity<float>) return infinity<float>;
  if (is_nan(x) || is_nan(y)) return ordered_sum(x, y);
  return to_float(hypot_parts(double(x), double(y)), status);
}

template <class T> struct Hypot : KernelDefaults {
  using Element = T;
  static constexpr int vectors_in_flight = 2;
  static constexpr bool spurious_underflow = true;
  static constexpr T low = sizeof(T) == 8 ? T(0x1p-450) : T(0x1p-60);
  static constexpr T high = sizeof(T) == 8 ? T(0x1p500) : T(0x1p62);
  static constexpr Magnitudes ordinary{low, high};
  template <class V> static SignMask<V> special(V x, V y) { return larger_outside(abs(x), abs(y), low, high); }
  /// The smaller square.
  template <class V> static SignMask<V> noisy(V x, V y) {
    return outside_but_zero(abs(x), low, high) | outside_but_zero(abs(y), low, high);
  }
  template <class V> static SignMask<V> nan_lanes(V x, V y) { return quiet_nans(x, y); }
  template <class V> static V nan_result(V x, V y) { return abs(first_nan(x, y)); }
  static T element(T x, T y, kelStatus& status) { return hypot_element(x, y, status); }
};

/// The lanes of which larger_outside says the same, by the sum of the squares of any operands. That of a quiet NaN is
/// that NaN, of two the first, and wants another look where it has a sign.
template <class V> struct SquaresTest {
  using Limits = Hypot<Lane<V>>;

  void add(V x, V y, V sum) {
    const SignMask<V> nans = quiet_nans(x, y) & ~int_bits(sum);
    all.add(sum);
    all_numbers.add(select(nans, splat<V>(1), sum));
    undecided |= larger_outside(abs(x), abs(y), Limits::low, Limits::high) & ~nans;
  }
  bool any() const { return !all.passed() && !all_numbers.passed() && kelvm::any(undecided); }
  BitMask lanes() const { return movemask(undecided); }

private:
  MiddleRange<V, true> all, all_numbers; // where the second passes alone there are NaNs
  SignMask<V> undecided{};
};
/// Estimated: by an estimated root, where the processor has one. In registers, where one vector is in flight, only the
/// shortest correction is worth it.
template <class T, bool Estimated = false>
struct ReducedHypot : std::conditional_t<flags_stay, Hypot<T>, AnyOperands<Hypot<T>>> {
  template <class V> using ResultTest = std::conditional_t<flags_stay, NoResultTest, SquaresTest<V>>;
  template <class V, class... Test> static V formula(V x, V y, Test&... test) {
    const V sum = ordered_sum(x * x, y * y);
    (test.add(x, y, sum), ...);
    if constexpr (Estimated && has_estimates<T>) {
      const EstimatedRoot<V> root = estimated_root(sum);
      return root.template corrected<1>(root.s);
    } else {
      return sqrt(sum);
    }
  }
};

struct Hypot64A53 : Hypot<double> {
  template <class V> static V formula(V x, V y) {
    const DoubleWord<V> result = hypot_parts(abs(x), abs(y));
    return rounded(result);
  }
};

struct Hypot32A24 : KernelDefaults {
  using Element = float;
  static constexpr int vectors_in_flight = 2;
  template <class V> using ResultTest = RoundingTest;
  template <class V> static SignMask<V> special(V x, V y) {
    return larger_outside(abs(x), abs(y), smallest_normal<float>, 0x1p126f);
  }
  template <class V> static V formula(V x, V y, RoundingTest& test) {
    return in_double_decided<51>(
        test, [](auto x, auto y) { return sqrt(x * x + y * y); }, x, y);
  }
  template <class V> static SignMask<V> nan_lanes(V x, V y) { return quiet_nans(x, y); }
  template <class V> static V nan_result(V x, V y) { return abs(first_nan(x, y)); }
  static float element(float x, float y, kelStatus& status) { return hypot_element(x, y, status); }
};

} // namespace kelvm::inline KELVM_BUILD::hypotenuse
