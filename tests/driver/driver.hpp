// One function of the library under test, called with the floating-point state under control, and what its elements
// give one at a time: the ground on which the contract, identity and special tests stand.
#pragma once

#include "elements.hpp"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace driver {

/// The build under test (sse41, avx2, avx512): KELVM_TESTED_BUILD of the environment, else that of the build tree.
std::string tested_build();
/// A build of this build tree, opened once.
const harness::Library& library(const std::string& build = tested_build());

enum Flag : unsigned { invalid = 0x01, divide_by_zero = 0x04, overflow = 0x08, underflow = 0x10, inexact = 0x20 };
/// The flags that a call raises only for an element that earns them.
inline constexpr unsigned honest_flags = invalid | divide_by_zero | overflow | underflow;
inline constexpr unsigned all_flags = 0x3F;
/// MXCSR of a new thread: all exceptions masked, round-to-nearest, subnormals honoured, no flag raised.
inline constexpr unsigned default_csr = 0x1F80;
/// What a mode adds to it.
enum Rounding : unsigned { nearest = 0, down = 0x2000, up = 0x4000, toward_zero = 0x6000 };
inline constexpr Rounding roundings[] = {nearest, down, up, toward_zero};
inline constexpr unsigned flush_to_zero = 0x8000, denormals_are_zero = 0x0040;
inline constexpr unsigned flushings[] = {0, flush_to_zero, denormals_are_zero, flush_to_zero | denormals_are_zero};
/// The direction in which a function computes that does not follow the caller's. Where the caller has the same, the
/// control word stays, and the flags with it.
Rounding own_rounding(const harness::Function& function);
/// The flag that belongs to a warning code.
unsigned flag_of(kelStatus code);
std::string flag_names(unsigned flags);

struct Ending {
  kelStatus status;
  unsigned csr; // as the call left it
  unsigned flags() const { return csr & honest_flags; }
};

class Callable {
public:
  /// `scalar`: which of a ScalarPower function's exponents (0 to scalars - 1).
  explicit Callable(const harness::Function& function, int scalar = 0);
  Callable(const harness::Function& function, const Element& with_scalar); // the exponent in parts 2 and 3

  static constexpr int scalars = 5;

  harness::Function function;
  /// The function's name without its prefix, followed by the exponent's number.
  std::string name() const;
  /// Calls the function with MXCSR set to `csr`, and puts the word found back.
  Ending call(harness::Arguments arguments, unsigned csr = default_csr) const;

private:
  std::string name_;
  Bytes exponent_;
  void* address_;
};

/// All functions, the ScalarPower ones once an exponent.
std::vector<Callable> callables();
std::ostream& operator<<(std::ostream& out, const Callable& s);

/// Elements in a row, and beside each what it gives when it is the only one of a call.
struct Strip {
  int count = 0;
  std::vector<Element> elements;
  Bytes source[2], destination[2];
  std::vector<kelStatus> status;
  std::vector<unsigned> flags;
};

Strip alone(const Callable& callable, const std::vector<Element>& elements, unsigned csr = default_csr);
/// The strip's elements of those indices, in their order, repeated until there are `count`.
Strip pick(const Callable& callable, const Strip& from, const std::vector<int>& indices, int count);

/// Whether a call on elements [from, from + len) of the strip, whose results are in dst1 and dst2, ended as its
/// elements do alone: all bits, the status of the last exceptional one, all flags that they raise and none that they do
/// not earn.
testing::AssertionResult as_alone(const Callable& callable, const Strip& strip, int from, int len, const Ending& ending,
                                  const void* dst1, const void* dst2);
/// Makes that call, out of place, and also looks for writes outside the destinations.
testing::AssertionResult as_alone(const Callable& callable, const Strip& strip, int from, int len,
                                  unsigned csr = default_csr);

/// A function's elements for the contract tests, computed once.
struct Sample {
  Strip all;
  std::vector<int> ordinary; // finite arguments and results, no warning, no flag
  Strip mixed, plain;        // 220 elements: of all kinds; ordinary ones
  Strip common; // ordinary ones with NaNs among them, so many without that a loop may forget, NaNs, then zeros and
                // infinities, so many without, and all of these
};
const Sample& sample_of(const Callable& callable);

/// Part `i` of the element, as bits.
std::uint64_t part_of(const Bytes& array, std::size_t part_size, std::size_t i);

} // namespace driver
