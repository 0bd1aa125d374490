#include "data.hpp"

#include <algorithm>
#include <cstring>
#include <random>

namespace bench {
namespace {

struct Row {
  const char* family;
  Range for_doubles, for_floats, second;
};
constexpr Range around{-10, 10};
// Families not listed take -10 to 10; complex ones take -5 to 5 in both parts.
constexpr Row rows[] = {
    {"Add", {-100, 100}, {-100, 100}, {-100, 100}},
    {"Sub", {-100, 100}, {-100, 100}, {-100, 100}},
    {"Mul", {-100, 100}, {-100, 100}, {-100, 100}},
    {"Div", {-100, 100}, {-100, 100}, {1, 100}},
    {"Hypot", {-100, 100}, {-100, 100}, {-100, 100}},
    {"Atan2", around, around, around},
    {"Ceil", {-1000, 1000}, {-1000, 1000}, {}},
    {"Floor", {-1000, 1000}, {-1000, 1000}, {}},
    {"Trunc", {-1000, 1000}, {-1000, 1000}, {}},
    {"Round", {-1000, 1000}, {-1000, 1000}, {}},
    {"Rint", {-1000, 1000}, {-1000, 1000}, {}},
    {"NearbyInt", {-1000, 1000}, {-1000, 1000}, {}},
    {"Modf", {-1000, 1000}, {-1000, 1000}, {}},
    {"Inv", {1, 100}, {1, 100}, {}},
    {"Sqrt", {0, 1000}, {0, 1000}, {}},
    {"InvSqrt", {1e-3, 1000}, {1e-3, 1000}, {}},
    {"Cbrt", {-1000, 1000}, {-1000, 1000}, {}},
    {"InvCbrt", {-1000, 1000}, {-1000, 1000}, {}},
    {"Pow2o3", {-1000, 1000}, {-1000, 1000}, {}},
    {"Pow3o2", {0, 1000}, {0, 1000}, {}},
    {"Exp", {-700, 700}, {-80, 80}, {}},
    {"Expm1", {-35, 700}, {-15, 80}, {}},
    {"Ln", {1e-3, 1000}, {1e-3, 1000}, {}},
    {"Log10", {1e-3, 1000}, {1e-3, 1000}, {}},
    {"Log1p", {-0.99, 100}, {-0.99, 100}, {}},
    {"Pow", {1e-2, 10}, {1e-2, 10}, around},
    {"Powx", {1e-2, 10}, {1e-2, 10}, {2.7, 2.7}},
    {"Asin", {-1, 1}, {-1, 1}, {}},
    {"Acos", {-1, 1}, {-1, 1}, {}},
    {"Acosh", {1, 100}, {1, 100}, {}},
    {"Atanh", {-0.999, 0.999}, {-0.999, 0.999}, {}},
    {"Asinh", {-100, 100}, {-100, 100}, {}},
    {"Erf", {-5, 5}, {-5, 5}, {}},
    {"Erfc", {-5, 9}, {-5, 9}, {}},
    {"CdfNorm", {-10, 5}, {-10, 5}, {}},
    {"ErfInv", {-0.999999, 0.999999}, {-0.999999, 0.999999}, {}},
    {"ErfcInv", {1e-6, 1.999999}, {1e-6, 1.999999}, {}},
    {"CdfNormInv", {1e-6, 0.999999}, {1e-6, 0.999999}, {}},
};

} // namespace

Ranges default_ranges(const harness::Function& function) {
  if (function.complex_source())
    return {{-5, 5},
            function.family == "Powx"  ? Range{1.7, 1.7}
            : function.family == "Pow" ? Range{-3, 3}
                                       : Range{-5, 5}};
  for (const Row& row : rows)
    if (function.family == row.family) return {function.is_float() ? row.for_floats : row.for_doubles, row.second};
  return {around, around};
}

Data::Data(const harness::Function& function, Ranges ranges, std::ptrdiff_t elements, Special special)
    : function_(function), elements_(elements < minimum ? minimum : elements) {
  std::mt19937_64 random(20);
  const auto put = [&](char* to, double x) {
    const float single = float(x);
    std::memcpy(to, function.is_float() ? static_cast<const void*>(&single) : &x, function.part_size());
  };
  const auto fill = [&](Place place, std::size_t parts, Range range) {
    arrays_[int(place)].resize(parts * function.part_size() + 2 * page);
    std::uniform_real_distribution<double> uniform(range.lo, range.hi);
    char* to = at(place);
    for (std::size_t i = 0; i < parts; ++i, to += function.part_size())
      put(to, range.lo == range.hi ? range.lo : uniform(random));
  };
  const std::size_t source_parts = function.complex_source() ? 2 : 1;
  fill(Place::source1, elements_ * source_parts, ranges.first);
  char* to = at(Place::source1);
  for (std::ptrdiff_t i = 0; special.percent != 0 && i < elements_; ++i, to += function.source_size())
    if (std::uniform_int_distribution(0, 99)(random) < special.percent) put(to, special.value);
  if (function.sources() == 2) fill(Place::source2, elements_ * source_parts, ranges.second);
  fill(Place::scalar, source_parts, ranges.second);
  for (int d = 0; d < function.destinations(); ++d)
    arrays_[int(Place::destination1) + d].resize(elements_ * function.destination_size() + 2 * page);
}

char* Data::at(Place place) const {
  std::vector<char>& array = arrays_[int(place)];
  if (array.empty()) return nullptr;
  const std::size_t start = reinterpret_cast<std::uintptr_t>(array.data()) % page;
  return array.data() + (page - start) % page + (page / 5 / 64 * 64) * std::size_t(place);
}

Call Data::call(std::ptrdiff_t n) const {
  return {at(Place::source1),      at(Place::source2),      at(Place::scalar),
          at(Place::destination1), at(Place::destination2), n};
}

double Data::value(Place place, std::ptrdiff_t index) const {
  const char* from = at(place) + index * function_.part_size();
  if (!function_.is_float()) {
    double x;
    std::memcpy(&x, from, sizeof x);
    return x;
  }
  float x;
  std::memcpy(&x, from, sizeof x);
  return x;
}

double Data::argument(int source, int part, std::ptrdiff_t i) const {
  const std::ptrdiff_t parts = function_.complex_source() ? 2 : 1;
  if (part >= parts) return 0;
  if (source == 0) return value(Place::source1, i * parts + part);
  if (function_.shape == harness::Shape::ScalarPower) return value(Place::scalar, part);
  return function_.sources() == 2 ? value(Place::source2, i * parts + part) : 0;
}

double Data::result(int component, std::ptrdiff_t i) const {
  if (function_.complex_destination()) return value(Place::destination1, 2 * i + component);
  return value(component == 0 ? Place::destination1 : Place::destination2, i);
}

void Data::clear_results() {
  for (Place place : {Place::destination1, Place::destination2})
    std::fill(arrays_[int(place)].begin(), arrays_[int(place)].end(), char(0xff));
}

} // namespace bench
