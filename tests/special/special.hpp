// Checks of rows: the result that an element must have, bit for bit, its status, and that it raises the flag of its
// code and none of the other three (invalid, divide-by-zero, overflow, underflow); alone, and as the first, a middle
// and the last element of a long array between ordinary ones, in place and out of place.
#pragma once

#include "driver.hpp"

#include <limits>

namespace special {

/// A number in the function's part type (a double literal must be exact there), its bits, or some NaN.
class Value {
public:
  enum Kind { number, pattern, quiet_nan, processor_nan };
  Value(double x) : x_(x) {}
  constexpr Value(Kind kind, std::uint64_t bits = 0) : kind_(kind), bits_(bits) {}

  std::uint64_t as_bits(bool is_float) const;
  bool matches(bool is_float, std::uint64_t result) const;
  std::string text(bool is_float) const;

private:
  Kind kind_ = number;
  double x_ = 0;
  std::uint64_t bits_ = 0;
};

inline Value bits(std::uint64_t pattern) { return {Value::pattern, pattern}; }
inline constexpr double inf = std::numeric_limits<double>::infinity();
/// As a result: any quiet NaN. As a source: one without payload, positive.
inline constexpr Value any_nan{Value::quiet_nan};
/// The NaN that the processor makes: quiet, negative, without payload.
inline constexpr Value default_nan{Value::processor_nan};

/// Flags of a row that follow from its status.
inline constexpr unsigned as_status = ~0u;

/// One element. Sources: the parts of the first, then of the second or of the exponent (two a complex number).
/// Results: the parts of the result, or those of both destinations.
struct Row {
  std::vector<Value> source, result;
  kelStatus status = kelStatusOk;
  unsigned flags = as_status; // else a sum of driver::Flag, without inexact
};

/// One element of a function, called alone with the given control word.
struct Answer {
  std::vector<std::uint64_t> parts;
  driver::Ending ending;
};
Answer ask(const harness::Function& function, const std::vector<Value>& source, unsigned csr = driver::default_csr);

void check_row(const harness::Function& function, const Row& row);

} // namespace special
