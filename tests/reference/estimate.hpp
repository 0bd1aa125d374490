// Cheap estimates of the exact functions from the host's mathematics library, used only to pass over results that are
// certainly unremarkable. Float functions are estimated in double, double functions in long double; those of complex
// sources are not.
#pragma once

#include "exact.hpp"

#include <vector>

namespace reference {

/// Writes the estimates of an element's results; `in` as in Arguments.
template <class T> using EstimateFunction = void (*)(const double* in, T* out);

template <class T> struct Estimate {
  EstimateFunction<T> function = nullptr;
  double bound = 0; // of the relative error of each component
};

struct FamilyEstimate {
  Estimate<double> in_double;
  Estimate<long double> in_long_double;
};

/// The estimate for a function's family and type: one of the two functions, or none.
FamilyEstimate estimate_of(const harness::Function& function);

/// The estimates for a block of inputs, computed once for all functions of a family and type.
class BlockEstimates {
public:
  explicit BlockEstimates(const harness::Function& function) : family_(estimate_of(function)) {}

  void evaluate(const Arguments* arguments, int elements);
  const double* of(const Estimate<double>&, int element) const { return &in_double_[at(element)]; }
  const long double* of(const Estimate<long double>&, int element) const { return &in_long_double_[at(element)]; }

private:
  static constexpr std::size_t width = 2;
  static std::size_t at(int element) { return width * static_cast<std::size_t>(element); }

  FamilyEstimate family_;
  std::vector<double> in_double_;
  std::vector<long double> in_long_double_;
};

} // namespace reference
