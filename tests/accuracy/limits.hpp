// The limits table: what each function must hold.
#pragma once

#include "judge.hpp"

#include <string>
#include <vector>

namespace accuracy {

struct Limit {
  std::string function;
  double ulp = 0;           // of normal results by component
  double bits = 0;          // relative error by norm at most 2^-bits
  double absolute = 0;      // absolute error of each component; one of these three is stated, the others are 0
  double subnormal_ulp = 0; // of subnormal results; 0: as `ulp`, or no more than bits and one ulp allow
  double norm_ulp = 0;      // complex: of the norm; 0: not limited
  double within = 0;        // holds for sources up to this magnitude only; 0: everywhere

  /// What of the limit the statistics exceed, one line; empty if nothing.
  std::string exceeded(const reference::Statistics& statistics) const;
};

/// Throws std::runtime_error with file and line for a row that it does not understand.
std::vector<Limit> read_limits(const std::string& path);
/// Null if the function has no row.
const Limit* find_limit(const std::vector<Limit>& limits, std::string_view function);

/// What of its row a function exceeds, or that it has none; empty if nothing.
std::string limit_fault(const std::vector<Limit>& limits, const harness::Function& function,
                        const reference::Statistics& statistics);

} // namespace accuracy
