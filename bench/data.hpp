// What the contenders are measured on: one set of random arguments a function, the same for all of them.
#pragma once

#include "functions.hpp"
#include "peers/peer.hpp"

#include <cstddef>
#include <vector>

namespace bench {

struct Range {
  double lo, hi;
};

/// Where a family's arguments are taken from unless the command line says otherwise: uniform, for each part of the
/// first and of the second source.
struct Ranges {
  Range first, second;
};
/// A zero, infinity or NaN, and how often it stands in a source.
struct Special {
  double value = 0;
  int percent = 0;
};
Ranges default_ranges(const harness::Function& function);

class Data {
public:
  /// At least `minimum` elements are made, so that short calls can walk over different ones.
  static constexpr std::ptrdiff_t minimum = 1024;

  /// That percentage of the first source's elements, in random places, hold the special value (of a complex one, in the
  /// real part).
  Data(const harness::Function& function, Ranges ranges, std::ptrdiff_t elements, Special special = {});

  /// The arrays from their start; destinations are written by whoever is called.
  Call call(std::ptrdiff_t n) const;
  std::ptrdiff_t elements() const { return elements_; }
  /// Part `part` of source `source` of element i, and what stands in result component `component`.
  double argument(int source, int part, std::ptrdiff_t i) const;
  double result(int component, std::ptrdiff_t i) const;
  void clear_results();

private:
  harness::Function function_;
  std::ptrdiff_t elements_;
  mutable std::vector<char> arrays_[5];

  /// An array with room for its placement: every array starts at its own offset in a page of memory, so that no load
  /// waits for an unrelated store to the same offset.
  enum class Place { source1, source2, scalar, destination1, destination2 };
  static constexpr std::size_t page = 4096;
  char* at(Place place) const;
  double value(Place place, std::ptrdiff_t index) const;
};

} // namespace bench
