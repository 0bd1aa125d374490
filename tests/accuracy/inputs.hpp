// Random and structured inputs for any function.
#pragma once

#include "exact.hpp"

#include <cstdint>
#include <optional>
#include <vector>

namespace accuracy {

/// A small, fast generator (Steele, Lea, Flood, Fast splittable pseudorandom number generators, 2014).
struct Random {
  std::uint64_t state;
  std::uint64_t next() {
    std::uint64_t z = state += 0x9e3779b97f4a7c15;
    z = (z ^ z >> 30) * 0xbf58476d1ce4e5b9;
    z = (z ^ z >> 27) * 0x94d049bb133111eb;
    return z ^ z >> 31;
  }
  std::uint64_t below(std::uint64_t n) {
    return static_cast<std::uint64_t>((static_cast<unsigned __int128>(next()) * n) >> 64);
  }
  double unit() { return static_cast<double>(next() >> 11) * 0x1p-53; } // [0, 1)
  double uniform(double lo, double hi) { return lo + (hi - lo) * unit(); }
  bool one_in(std::uint64_t n) { return below(n) == 0; }
};

struct Range {
  double lo, hi;
};

/// What is worth trying for one real argument of a family.
struct Profile;

/// Where the inputs of one function come from. Shared by threads.
class Inputs {
public:
  /// A range given for a source replaces the family's domain: only points inside are generated (of complex sources,
  /// points whose parts are both inside).
  Inputs(const harness::Function& function, std::optional<Range> range1, std::optional<Range> range2);

  /// How many elements are steps: together they meet every row of the family's tables and every magnitude of distance
  /// from its points of interest. None if a range is given for the first source.
  std::uint64_t steps() const { return steps_.size(); }

  /// Numbers at which the family's formula, status or result changes, for a part of its sources: 0 and 1 of the first,
  /// 2 and 3 of the second.
  const std::vector<double>& points(int part) const;

  /// Fills a block with elements number `first` and on: first the steps, then random ones. The second source of a
  /// ScalarPower function is one value for the whole block.
  void fill(Random& random, std::uint64_t first, std::vector<reference::Arguments>& block) const;

private:
  double part(Random&, const Profile&, const std::optional<Range>&) const;
  double rounded(double x) const;
  double neighbour(Random&, double x) const;
  void real_pair(Random&, double parts[4]) const;
  void complex_power(Random&, double parts[4]) const;
  void complex_shape(Random&, double parts[2]) const;
  void append_steps();
  void step(Random&, std::uint64_t number, double parts[2]) const;

  harness::Function function_;
  std::optional<Range> range_[2];
  const Profile* profile_[4]; // one a part
  std::vector<Range> steps_;
  std::vector<double> hard_; // arguments closest to multiples of pi/2, one or more an exponent; for periodic families
};

} // namespace accuracy
