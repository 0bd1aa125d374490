// w ln z to as many bits as a complex power needs: where it is so large that double-double leaves its angle no
// significance, or where its terms cancel to next to a multiple of pi/2.
#pragma once

#include "complex/power_element.hpp"
#include "exact/scaled_sum.hpp"

namespace kelvm::inline KELVM_BUILD {

/// size + i (quadrant pi/2 + angle), |angle| <= pi/4 or so; modulo 2 pi i.
struct PowerExponent {
  ScaledSum size;
  int quadrant;
  ScaledSum angle;
};

/// w ln z for finite z != 0, y >= +0, and w, from ln z to about 2^-95: the size with an absolute error below 2^-140,
/// the angle with a relative error below 2^-60 unless it is below 2^-1800.
PowerExponent long_power_exponent(const PowerOperands& o, DoubleWord<double> ln_abs, DoubleWord<double> angle);

} // namespace kelvm::inline KELVM_BUILD
