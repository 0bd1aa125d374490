// Cheap estimates of the exact functions from the host's mathematics library, used only to pass over results that are
// certainly unremarkable. Float members are estimated in double, double members in long double.
#pragma once

#include "members.hpp"

namespace reference {

/// Writes the estimates of an element's results; `in` as in Arguments.
template <class T> using EstimateFunction = void (*)(const double* in, T* out);

template <class T> struct Estimate {
  EstimateFunction<T> function = nullptr;
  double bound = 0; // of the relative error of each component
};

struct FamilyEstimate {
  Estimate<double> for_float;
  Estimate<long double> for_double;
};

/// The estimate for a member's family and type; both functions null where there is none.
FamilyEstimate estimate_of(const harness::Member& member);

} // namespace reference
