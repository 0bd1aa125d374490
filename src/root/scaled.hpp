// Positive results, rounded once from a double-word in the middle of the double range, with the code and flag that
// they earn.
#pragma once

#include "exact/rounding_test.hpp"
#include "exact/scaled_sum.hpp"
#include "frame/status.hpp"

namespace kelvm::inline KELVM_BUILD {

/// The double nearest to (hi + lo) * scale, scale a power of two.
inline double scaled_result(DoubleWord<double> y, double scale, kelStatus& status) {
  y = normalised(y);
  const double result = y.hi * scale;
  if (result == infinity<double>) return overflow(status, 1.0);
  if (result > smallest_normal<double>) return result;
  const double limit = smallest_normal<double> / scale;
  if (y.hi > limit || (y.hi == limit && y.lo >= 0)) return result;
  return underflow(status, rounded_as_subnormal(y, limit) * scale);
}

/// The float nearest to hi + lo.
inline float to_float(DoubleWord<double> y, kelStatus& status) {
  const double odd = round_to_odd(normalised(y));
  const float result = float(odd);
  if (result == infinity<float>) return overflow(status, 1.0f);
  return odd < smallest_normal<float> ? underflow(status, result) : result;
}

} // namespace kelvm::inline KELVM_BUILD
