// Measures functions of one family and type on the same inputs, on several threads.
#pragma once

#include "inputs.hpp"
#include "judge.hpp"

#include <functional>
#include <span>
#include <string>

namespace accuracy {

/// Fills the inputs of block `index`; returns false after the last block.
using Source = std::function<bool(std::uint64_t index, std::vector<reference::Arguments>& block)>;

struct Options {
  unsigned threads = 2;
  bool use_estimate = true;
  bool check_status = true; // element by element
  std::uint64_t blocks = 0; // how many there will be, for the progress line; 0 shows none
};

/// What allows functions to be measured together: the same exact function, inputs and result type.
bool same_function(const harness::Function& a, const harness::Function& b);

/// Calls the functions, which have the same function, block by block and judges every element. Throws what a thread
/// threw.
std::vector<reference::Statistics> measure(const harness::Library& library,
                                           std::span<const harness::Function> functions, const Source& source,
                                           const Options& options);

/// The figures, several lines: maxima with their inputs, share correctly rounded, histogram.
std::string report(const harness::Function& function, const reference::Statistics& statistics);
/// The same on one line.
std::string summary(const harness::Function& function, const reference::Statistics& statistics);

/// What makes a run worthless: an estimate that was further off than its bound. Empty if nothing.
std::string estimate_fault(const reference::Statistics& statistics);
/// An element with another status than it earns. Empty if none.
std::string status_fault(const reference::Statistics& statistics);

} // namespace accuracy
