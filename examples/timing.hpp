// What the examples measure with.
#pragma once

#include <algorithm>
#include <chrono>
#include <cmath>
#include <span>

/// The milliseconds that the work takes.
template <class Work> double milliseconds(Work work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

/// The largest difference of two ranges of the same size, a NaN if one is among the differences.
inline double largest_difference(std::span<const double> a, std::span<const double> b) {
  double largest = 0;
  for (std::size_t i = 0; i < a.size(); ++i)
    if (const double difference = std::abs(a[i] - b[i]); !(difference <= largest)) largest = difference;
  return largest;
}
