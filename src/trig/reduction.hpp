// Reduction of large arguments, shared by every circular function: |x| = q pi/2 + y for any finite double.
//
// |x| < 2^30: q = round(|x| 2/pi), and q pi/2 is subtracted in four or five parts, all but the last so short that their
// products with q are exact; what the subtractions round off is gathered in the tail (Cody and Waite, 1980).
// |x| >= 2^30: the integer significand times those 185 bits of 2/pi that matter modulo 4, and the fraction times pi/2,
// all in integers (Payne and Hanek, "Radian reduction for trigonometric functions", 1983). The error is below 2^-130 of
// a quadrant; the double nearest to a multiple of pi/2 is 2^-61 away, which leaves 69 significant bits.
#pragma once

#include "exact/double_word.hpp"

namespace kelvm::inline KELVM_BUILD {

struct Quadrant {
  int number;           ///< 0 .. 3
  DoubleWord<double> y; ///< in [-pi/4, pi/4] up to rounding; hi is y rounded
};

/// The same of several.
template <class V> struct Quadrants {
  Int<V> number;
  DoubleWord<V> y;
};

/// Reduces any finite x: x = number pi/2 + y modulo 2 pi. Odd: -x gives -y and the opposite number.
Quadrant reduce_to_quadrant(double x);
/// The same bits, of vectors.
void reduce_to_quadrants(Native<double> x, Quadrants<Native<double>>& reduced);

} // namespace kelvm::inline KELVM_BUILD
