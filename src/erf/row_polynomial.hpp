// Polynomials whose coefficients are a row of a table (simd/table.hpp, lookup_row), and results that a single product
// would round twice.
#pragma once

#include "exact/double_word.hpp"
#include "frame/status.hpp"
#include "simd/table.hpp"

namespace kelvm::inline KELVM_BUILD {

/// Coefficients First .. Last of a row by Horner's rule.
template <int First, int Last, class V, std::size_t N> inline V row_horner(V t, const std::array<V, N>& c) {
  V sum = c[Last];
  unrolled<Last - First>([&](auto i) { sum = sum * t + c[Last - 1 - i]; });
  return sum;
}
template <class V, std::size_t N> inline V row_horner(V t, const std::array<V, N>& c) {
  return row_horner<0, int(N) - 1>(t, c);
}

/// The polynomial of a row c0_lo, c1_lo, c2, ..., c0_hi, c1_hi in t = t_hi + t_lo, t_hi of 26 bits: the upper word
/// has 26 bits, the lower one is below 2^-7 of it and has an error below 2^-59. c0_hi and c1_hi have 26 bits, so that
/// the parts of the upper word are exact.
template <class V, std::size_t N> inline DoubleWord<V> split_row_sum(V t, V t_hi, V t_lo, const std::array<V, N>& c) {
  const V c0_hi = c[N - 2], c1_hi = c[N - 1];
  const V rest = c[0] + t * (c[1] + t * row_horner<2, int(N) - 3>(t, c));
  const V product = c1_hi * t_hi;
  const V head = head_of(c0_hi + product);
  return {head, ((c0_hi - head) + product) + c1_hi * t_lo + rest};
}
template <class V, std::size_t N> inline DoubleWord<V> split_row_sum(V t, const std::array<V, N>& c) {
  return split_row_sum(t, head_of(t), t - head_of(t), c);
}

/// x (c_hi + c_lo) for a tiny x, c_hi of at most 26 bits, rounded once. In units of 2^-256, where nothing is subnormal;
/// a result below the normal range is rounded by the sum with the number whose unit in the last place is theirs, and
/// taken out of its bits. Raises underflow there.
inline double tiny_product(double x, double c_hi, double c_lo) {
  const double scaled = x * 0x1p256, hi = head_of(scaled);
  const double product = c_hi * hi, rest = c_hi * (scaled - hi) + c_lo * scaled; // the product is exact
  const double result = product + rest;
  if (abs(result) >= 0x1p-766) return result * 0x1p-256;
  ownRaiseFpException(kelStatusUnderflow);
  const double to_unit = from_bits<double>(bits(0x1p-766) | sign_of(x));
  const double head = head_of(result + to_unit);
  const double sum = head + ((product - (head - to_unit)) + rest);
  return from_bits<double>(bits(sum) - bits(0x1p-766));
}

} // namespace kelvm::inline KELVM_BUILD
