// Numbers with their power of two apart, for single elements whose intermediate values leave the range of double.
#pragma once

#include "exact/exact.hpp"

#include <utility>

namespace kelvm::inline KELVM_BUILD {

inline double power_of_two(int exponent) { return from_bits<double>(std::uint64_t(exponent + 1023) << 52); }

/// x = fraction 2^exponent, 1 <= |fraction| < 2, or zero.
struct Scaled {
  double fraction;
  int exponent = 0;
};
inline Scaled scaled(double x) {
  if (x == 0) return {x};
  const bool subnormal = abs(x) < 0x1p-1022;
  if (subnormal) x *= 0x1p54;
  const int exponent = int(bits(abs(x)) >> 52) - 1023 - (subnormal ? 54 : 0);
  return {from_bits<double>((bits(x) & 0x800FFFFFFFFFFFFFu) | 0x3FF0000000000000u), exponent};
}

/// (head + tail) 2^exponent, 2^-110 < |head| < 2^110 or zero.
struct ScaledSum {
  HeadTail<double> value;
  int exponent;

  /// Rounded once to double, infinity where it overflows.
  double rounded() const {
    const int bounded = exponent < -1300 ? -1300 : exponent > 1300 ? 1300 : exponent;
    const int last = bounded < -1022 ? -1022 : bounded > 1023 ? 1023 : bounded;
    double sum = value.head + value.tail;
    if (bounded < -900) {
      const double limit = with_sign(power_of_two(-1022 - bounded), sign_of(sum)); // becomes the smallest normal number
      if (abs(sum) < abs(limit)) { // sums with it are multiples of what becomes the smallest subnormal one
        const HeadTail<double> from_limit = two_sum(limit, value.head);
        sum = with_sign((from_limit.head + (from_limit.tail + value.tail)) - limit, sign_of(sum));
      }
    }
    return sum * power_of_two(bounded - last) * power_of_two(last);
  }
};

/// Relative errors below 2^-100, also where a sum cancels, for normalised values.
inline ScaledSum product(const ScaledSum& x, const ScaledSum& y) {
  return {multiply(x.value, y.value), x.exponent + y.exponent};
}
inline ScaledSum sum(ScaledSum x, ScaledSum y) {
  if (y.value.head == 0) y.exponent = x.exponent;
  if (x.value.head == 0) x.exponent = y.exponent;
  if (x.exponent < y.exponent) std::swap(x, y);
  const int distance = x.exponent - y.exponent;
  const double down = distance > 300 ? 0.0 : power_of_two(-distance);
  return {add(x.value, HeadTail<double>{y.value.head * down, y.value.tail * down}), x.exponent};
}
/// x / y, relative error below 2^-90.
inline ScaledSum quotient(const ScaledSum& x, const ScaledSum& y) {
  const double q = x.value.head / y.value.head;
  const HeadTail<double> product = two_product(q, y.value.head);
  const double rest = ((x.value.head - product.head) - product.tail) + (x.value.tail - q * y.value.tail);
  return {fast_two_sum(q, rest / y.value.head), x.exponent - y.exponent};
}

} // namespace kelvm::inline KELVM_BUILD
