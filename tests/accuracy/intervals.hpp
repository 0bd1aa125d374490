// The error of functions along their domain, for pictures.
#pragma once

#include "inputs.hpp"

#include <vector>

namespace accuracy {

/// What a function's error is drawn over: its source, or the absolute value of a complex one.
struct Axis {
  Range range;
  bool logarithmic;
  Range second; // of a second source or an exponent, or of its absolute value; uniform

  /// The bounds of that many intervals of equal width.
  std::vector<double> bounds(int intervals) const;
};

/// The part of a family's domain that tells most: the whole, or where formulas change.
Axis axis_of(const harness::Function& function);

/// Fills a block with random elements whose first source lies in the interval, complex ones in all directions.
void fill(Random& random, const harness::Function& function, const Axis& axis, Range interval,
          std::vector<reference::Arguments>& block);

} // namespace accuracy
