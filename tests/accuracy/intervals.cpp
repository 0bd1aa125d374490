#include "intervals.hpp"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace accuracy {
namespace {

struct Row {
  std::string_view family;
  bool logarithmic;
  Range for_doubles, for_floats;
};
// Of odd and even functions, the positive half.
constexpr Row rows[] = {
    {"Exp", false, {-708.3, 709.7}, {-87.3, 88.7}},
    {"Expm1", false, {-10, 10}, {-10, 10}},
    {"Log1p", false, {-1, 4}, {-1, 4}},
    {"Sin", true, {1e-3, 1e9}, {1e-3, 1e9}},
    {"Cos", true, {1e-3, 1e9}, {1e-3, 1e9}},
    {"SinCos", true, {1e-3, 1e9}, {1e-3, 1e9}},
    {"CIS", true, {1e-3, 1e9}, {1e-3, 1e9}},
    {"Tan", true, {1e-3, 1e9}, {1e-3, 1e9}},
    {"Asin", false, {-1, 1}, {-1, 1}},
    {"Acos", false, {-1, 1}, {-1, 1}},
    {"Atan2", false, {-10, 10}, {-10, 10}},
    {"Sinh", true, {1e-3, 700}, {1e-3, 88}},
    {"Cosh", true, {1e-3, 700}, {1e-3, 88}},
    {"Tanh", true, {1e-3, 25}, {1e-3, 25}},
    {"Asinh", true, {1e-3, 1e6}, {1e-3, 1e6}},
    {"Acosh", true, {1, 1e4}, {1, 1e4}},
    {"Atanh", false, {-1, 1}, {-1, 1}},
    {"Erf", false, {0, 6}, {0, 4}},
    {"Erfc", false, {-6, 26.5}, {-4, 9.2}},
    {"CdfNorm", false, {-37.5, 8.5}, {-13, 5.5}},
    {"ErfInv", false, {-1, 1}, {-1, 1}},
    {"ErfcInv", true, {1e-20, 2}, {1e-20, 2}},
    {"CdfNormInv", true, {1e-20, 1}, {1e-20, 1}},
};

} // namespace

std::vector<double> Axis::bounds(int intervals) const {
  std::vector<double> found(intervals + 1);
  for (int i = 0; i <= intervals; ++i) {
    const double share = double(i) / intervals;
    found[i] = logarithmic ? range.lo * std::pow(range.hi / range.lo, share) : std::lerp(range.lo, range.hi, share);
  }
  return found;
}

Axis axis_of(const harness::Function& function) {
  if (function.complex_source())
    return {{1e-3, 80}, true, function.family.starts_with("Pow") ? Range{0, 3} : Range{0, 10}};
  for (const Row& row : rows)
    if (row.family == function.family)
      return {function.is_float() ? row.for_floats : row.for_doubles, row.logarithmic, {-10, 10}};
  return {{1e-3, 1e3}, true, {-10, 10}};
}

void fill(Random& random, const harness::Function& function, const Axis& axis, Range interval,
          std::vector<reference::Arguments>& block) {
  const auto set = [&](double* parts, double size) {
    parts[0] = size;
    if (!function.complex_source()) return;
    const double angle = random.uniform(-std::numbers::pi, std::numbers::pi);
    parts[0] = size * std::cos(angle);
    parts[1] = size * std::sin(angle);
  };
  for (reference::Arguments& element : block) {
    const double share = random.unit();
    set(element.parts, axis.logarithmic ? interval.lo * std::pow(interval.hi / interval.lo, share)
                                        : std::lerp(interval.lo, interval.hi, share));
    set(element.parts + 2, random.uniform(axis.second.lo, axis.second.hi));
  }
  if (function.is_float())
    for (reference::Arguments& element : block)
      for (double& part : element.parts) part = static_cast<float>(part);
  if (function.shape == harness::Shape::ScalarPower) // one exponent for the whole block
    for (reference::Arguments& element : block) std::copy_n(block[0].parts + 2, 2, element.parts + 2);
}

} // namespace accuracy
