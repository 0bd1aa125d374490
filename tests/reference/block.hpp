// One call of a function on a block of elements given as doubles.
#pragma once

#include "exact.hpp"

#include <span>
#include <vector>

namespace reference {

class Block {
public:
  Block(const harness::Library& library, const harness::Function& function)
      : address_(library.address(function)), function_(function) {}

  /// Calls the function. The exponent of a ScalarPower function is the first element's second source. Throws
  /// std::runtime_error if the call is refused.
  void call(std::span<const Arguments> arguments);
  /// Per component of the results, one array of doubles: what Judge::block takes.
  const double* const* results() const { return pointers_; }
  /// The status of each element when it is called alone.
  const kelStatus* statuses();

private:
  template <class T> void call_parts(std::span<const Arguments> arguments);

  void* address_;
  harness::Function function_;
  std::vector<char> source_[2], destination_[2];
  std::vector<double> results_[2];
  harness::Arguments call_;
  kelStatus status_ = kelStatusOk;
  std::vector<kelStatus> statuses_;
  const double* pointers_[2] = {};
};

} // namespace reference
