// Numbers with their power of two apart, for single elements whose intermediate values leave the range of double.
#pragma once

#include "exact/double_word.hpp"
#include "simd/exponent.hpp"

#include <utility>

namespace kelvm::inline KELVM_BUILD {

inline double power_of_two(int exponent) { return power_of_two<double>(std::uint64_t(exponent)); }

/// x = fraction 2^exponent, 1 <= |fraction| < 2, or zero.
struct Scaled {
  double fraction;
  int exponent = 0;
};
inline Scaled scaled(double x) {
  if (x == 0) return {x};
  const bool subnormal = abs(x) < smallest_normal<double>;
  if (subnormal) x *= 0x1p54;
  const int exponent = int(bits(abs(x)) >> 52) - 1023 - (subnormal ? 54 : 0);
  return {from_bits<double>((bits(x) & 0x800FFFFFFFFFFFFFu) | 0x3FF0000000000000u), exponent};
}

/// hi + lo rounded to a multiple of 2^-52 limit, where limit is a power of two with the sign of hi and |hi + lo| <
/// |limit|: scaled so that the limit becomes the smallest normal number, it is a multiple of the smallest subnormal
/// one.
inline double rounded_as_subnormal(DoubleWord<double> y, double limit) {
  const DoubleWord<double> from_limit = two_sum(limit, y.hi);
  return (from_limit.hi + (from_limit.lo + y.lo)) - limit;
}

/// (hi + lo) 2^exponent, 2^-110 < |hi| < 2^110 or zero.
struct ScaledSum {
  DoubleWord<double> value;
  int exponent;

  /// Rounded once to double, infinity where it overflows. Raises no underflow.
  double rounded() const {
    const int bounded = exponent < -1300 ? -1300 : exponent > 1300 ? 1300 : exponent;
    const int last = bounded < -1022 ? -1022 : bounded > 1023 ? 1023 : bounded;
    double sum = value.hi + value.lo;
    if (bounded < -900) {
      const double limit = with_sign(power_of_two(-1022 - bounded), sign_of(sum)); // becomes the smallest normal number
      if (abs(sum) < abs(limit)) sum = with_sign(rounded_as_subnormal(value, limit), sign_of(sum));
    }
    return sum * power_of_two(bounded - last) * power_of_two(last);
  }
};

/// Relative errors below 2^-100, also where a sum cancels, for normalised values.
inline ScaledSum product(const ScaledSum& x, const ScaledSum& y) {
  return {multiply(x.value, y.value), x.exponent + y.exponent};
}
inline ScaledSum sum(ScaledSum x, ScaledSum y) {
  if (y.value.hi == 0) y.exponent = x.exponent;
  if (x.value.hi == 0) x.exponent = y.exponent;
  if (x.exponent < y.exponent) std::swap(x, y);
  const int distance = x.exponent - y.exponent;
  const double down = distance > 300 ? 0.0 : power_of_two(-distance);
  return {add(x.value, down * y.value), x.exponent};
}
/// x / y, relative error below 2^-90.
inline ScaledSum quotient(const ScaledSum& x, const ScaledSum& y) {
  const double q = x.value.hi / y.value.hi;
  const DoubleWord<double> product = two_product(q, y.value.hi);
  const double rest = ((x.value.hi - product.hi) - product.lo) + (x.value.lo - q * y.value.lo);
  return {fast_two_sum(q, rest / y.value.hi), x.exponent - y.exponent};
}

} // namespace kelvm::inline KELVM_BUILD
