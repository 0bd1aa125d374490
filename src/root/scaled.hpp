// Positive results, rounded once from a head and tail in the middle of the double range, with the code and flag that
// they earn.
#pragma once

#include "exact/exact.hpp"
#include "frame/status.hpp"

namespace kelvm::inline KELVM_BUILD {

/// The double nearest to (head + tail) * scale, scale a power of two.
inline double scaled_result(HeadTail<double> y, double scale, kelStatus& status) {
  y = fast_two_sum(y.head, y.tail);
  const double result = y.head * scale;
  if (result == infinity<double>) return overflow(status, 1.0);
  if (result > 0x1p-1022) return result;
  const double limit = 0x1p-1022 / scale;
  if (y.head > limit || (y.head == limit && y.tail >= 0)) return result;
  // Below, sums with the limit are rounded to multiples of what scales to the smallest subnormal number.
  const HeadTail<double> sum = two_sum(limit, y.head);
  return underflow(status, ((sum.head + (sum.tail + y.tail)) - limit) * scale);
}

/// A double that rounds to float, subnormal ones included, as the exact sum does, |head| >= |tail|: round to odd
/// (Boldo, Melquiond, "Emulation of FMA and correctly rounded sums: proved algorithms using rounding to odd", 2008).
inline double odd_sum(HeadTail<double> y) {
  const auto [head, tail] = fast_two_sum(y.head, y.tail);
  if (tail == 0 || (bits(head) & 1) != 0) return head;
  return from_bits<double>((tail > 0) == (head > 0) ? bits(head) + 1 : bits(head) - 1);
}

/// The float nearest to head + tail.
inline float to_float(HeadTail<double> y, kelStatus& status) {
  const double odd = odd_sum(y);
  const float result = float(odd);
  if (result == infinity<float>) return overflow(status, 1.0f);
  return odd < 0x1p-126 ? underflow(status, result) : result;
}

} // namespace kelvm::inline KELVM_BUILD
