// How far a function's results are from better ones.
#pragma once

#include "sources.hpp"

#include <memory>

/// What a result should be: the sum of the two.
struct Better {
  long double high, low = 0;
};

/// Gives better results for the same elements.
class Reference {
public:
  virtual ~Reference() = default;
  /// The parts of all sources stand beside each other, the exponent after its source; so do the results.
  virtual void evaluate(std::span<const double> sources, int elements, std::span<Better> results) = 0;
};

/// The exact function, or null where the program was built without MPFR.
std::unique_ptr<Reference> exact_reference(const Function& function);

/// Compares the function over its inputs with another accuracy's (a suffix such as A53, or a name) or with "mpfr" and
/// returns a report. Throws BadInput.
std::string compare(const Options& options);
