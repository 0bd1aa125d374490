// Arc tangent, angle of a point, arc sine, arc cosine: special rows, ranges, symmetry.
#include "special.hpp"

#include <cmath>
#include <numbers>
#include <random>

namespace {

using special::any_nan, special::bits, special::default_nan, special::inf;
constexpr double pi = std::numbers::pi;

/// A number as the function's type rounds it.
double rounded(harness::Type type, double x) { return type == harness::Type::f32 ? double(float(x)) : x; }

constexpr harness::Type real_types[] = {harness::Type::f32, harness::Type::f64};

TEST(InverseTrig, SpecialRows) {
  for (const double sign : {1.0, -1.0}) {
    const double zero = sign * 0.0;
    for (const harness::Type type : real_types)
      special::check("Atan", type, {{{sign * inf}, {rounded(type, sign * pi / 2)}}});
    special::check_real("Atan", {{{zero}, {zero}}});
    special::check_real("Asin", {{{zero}, {zero}}});
    for (const char* family : {"Asin", "Acos"})
      special::check_real(family, {{{sign * inf}, {default_nan}, kelStatusDomain},
                                   {{sign * 2.0}, {default_nan}, kelStatusDomain},
                                   {{sign * 0x1.000002p+0}, {default_nan}, kelStatusDomain}});
    // Small enough for x to be the nearest number at every accuracy; float: subnormal
    for (const char* family : {"Atan", "Asin"}) {
      special::check_real(family, {{{sign * 0x1p-149}, {sign * 0x1p-149}}, {{sign * 0x1.8p-40}, {sign * 0x1.8p-40}}});
      special::check(family, harness::Type::f64,
                     {{{sign * 0x1p-1074}, {sign * 0x1p-1074}}, {{sign * 0x1.8p-340}, {sign * 0x1.8p-340}}});
    }
  }
  special::check_real("Acos", {{{1.0}, {0.0}}});
  for (const harness::Type type : real_types) {
    special::check("Acos", type, {{{-1.0}, {rounded(type, pi)}}});
    special::check("Asin", type, {{{1.0}, {rounded(type, pi / 2)}}, {{-1.0}, {rounded(type, -pi / 2)}}});
  }
  for (const char* family : {"Atan", "Asin", "Acos"}) {
    special::check(family, harness::Type::f32, {{{bits(0xFFC00001)}, {bits(0xFFC00001)}}});
    special::check(family, harness::Type::f64, {{{bits(0x7FF8000000000123)}, {bits(0x7FF8000000000123)}}});
  }
}

/// The table of C's Annex F, with both signs of y. What a formula computes is exact at the highest accuracy only.
TEST(InverseTrig, AngleOfAPoint) {
  for (const harness::Type type : real_types) {
    const bool is_float = type == harness::Type::f32;
    const double least = is_float ? 0x1p-149 : 0x1p-1074, most = is_float ? 0x1p127 : 0x1p1023;
    const std::string highest = is_float ? "kelsAtan2_32f_A24" : "kelsAtan2_64f_A53";
    for (const double s : {1.0, -1.0}) {
      const double zero = s * 0.0, half_pi = rounded(type, s * pi / 2), whole_pi = rounded(type, s * pi);
      std::vector<special::Row> rows = {
          {{zero, 0.0}, {zero}},
          {{zero, -0.0}, {whole_pi}},
          {{s * inf, inf}, {rounded(type, s * pi / 4)}},
          {{s * inf, -inf}, {rounded(type, s * 3 * pi / 4)}},
          {{s * least, most}, {zero}, kelStatusUnderflow},
          {{s * least, 1.0}, {s * least}, kelStatusUnderflow},
          {{s * 3 * least, 4.0}, {s * least}, kelStatusUnderflow},
          {{s * least, inf}, {zero}},
          {{s * least, -inf}, {whole_pi}},
          {{any_nan, s}, {any_nan}},
          {{s, any_nan}, {any_nan}},
          {{zero, any_nan}, {any_nan}},
          {{any_nan, s * inf}, {any_nan}},
      };
      for (const double x : {least, 1.0, most, inf}) {
        rows.push_back({{zero, x}, {zero}});
        rows.push_back({{zero, -x}, {whole_pi}});
        rows.push_back({{s * inf, std::isinf(x) ? 0.0 : x}, {half_pi}});
        rows.push_back({{s * x, 0.0}, {half_pi}});
        rows.push_back({{s * x, -0.0}, {half_pi}});
      }
      special::check("Atan2", type, rows);
      rows = {{{s * least, -most}, {whole_pi}},
              {{s * most, least}, {half_pi}},
              {{s * most, -least}, {half_pi}},
              {{s * least, least}, {rounded(type, s * pi / 4)}},
              {{s * most, -most}, {rounded(type, s * 3 * pi / 4)}}};
      special::check(highest, rows);
    }
  }
}

/// Results of a function for all pairs or numbers given.
template <class T>
std::vector<T> results(const harness::Function& function, const std::vector<T>& y, const std::vector<T>& x) {
  std::vector<T> result(y.size());
  driver::library().call(function, {.src1 = y.data(), .src2 = x.data(), .dst1 = result.data(), .len = int(y.size())});
  return result;
}

/// No result is beyond pi/2 or pi, as floats and doubles have them; A21 and A11 stay below the real numbers. Arc
/// tangent, arc sine and the angle are odd in their first source.
template <class T> void check_range_and_symmetry(const harness::Function& function) {
  std::mt19937_64 random(1);
  std::uniform_real_distribution<double> unit(-1, 1);
  const bool any_size = function.family == "Atan" || function.family == "Atan2";
  std::vector<T> y(20011), x(y.size());
  for (std::size_t i = 0; i < y.size(); ++i) {
    y[i] = T(unit(random));
    x[i] = T(std::ldexp(unit(random), int(random() % 40)));
    if (i % 2 == 0) y[i] = T(std::copysign(1 - std::ldexp(unit(random) + 1, -int(random() % 54)), y[i])); // next to +-1
    if (std::fabs(y[i]) > 1) y[i] = T(1);
    if (any_size) y[i] = T(std::ldexp(y[i], int(random() % 120)));
  }
  std::vector<T> minus_y = y;
  for (T& v : minus_y) v = -v;
  const std::vector<T> result = results(function, y, x), mirrored = results(function, minus_y, x);
  const bool whole = function.family == "Acos" || function.family == "Atan2", odd = function.family != "Acos";
  T most = T(whole ? pi : pi / 2);
  if (function.is_float() && function.suffix != "A24") most = std::nextafter(most, T(0));
  int wrong = 0;
  for (std::size_t i = 0; i < y.size() && wrong < 5; ++i) {
    const T least = odd ? -most : T(0);
    const bool of_border = !any_size && std::fabs(y[i]) == 1; // pi and pi/2 rounded, at every accuracy
    if (((result[i] >= least && result[i] <= most) || of_border) && (!odd || mirrored[i] == -result[i])) continue;
    ++wrong;
    ADD_FAILURE() << function.name << std::hexfloat << " of " << y[i] << ", " << x[i] << " is " << result[i] << ", of "
                  << minus_y[i] << " " << mirrored[i];
  }
}
TEST(InverseTrig, RangeAndSymmetry) {
  for (const harness::Function& function : harness::all_functions())
    for (const char* family : {"Atan", "Atan2", "Asin", "Acos"})
      if (function.family == family && function.type == harness::Type::f32)
        check_range_and_symmetry<float>(function);
      else if (function.family == family && function.type == harness::Type::f64)
        check_range_and_symmetry<double>(function);
}

} // namespace
