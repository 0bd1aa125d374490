// Complex roots, logarithms and powers: Annex G of C by list, the sides of the cut, conjugate symmetry bit for bit, the
// ends of the range, the rules of powers.
#include "special.hpp"

#include <string>

namespace {

using harness::Type;
using special::any_nan, special::default_nan, special::inf, special::Row, special::Value;

/// A NaN of a row's result has the processor's bits.
void check_both(const char* family, const std::vector<Row>& rows) {
  for (Type type : {Type::c32, Type::c64}) special::check(family, type, rows);
}

/// f(conj z) = conj f(z), the sign of a NaN apart, for full precision and below.
void check_conjugates(const char* family, const std::vector<std::vector<Value>>& tails) {
  const double parts[] = {0.0, -0.0, 0.75, -0.75, 1.0, -1.0, 1.125, -3.5, 0x1p-130, -0x1p100, 0x1.8p127, inf, -inf};
  for (const harness::Function& m : harness::all_functions()) {
    if (m.family != family || !m.complex_source()) continue;
    for (double x : parts)
      for (double y : parts)
        for (const std::vector<Value>& tail : tails) {
          std::vector<Value> z{x, y}, conjugate{x, -y};
          z.insert(z.end(), tail.begin(), tail.end());
          conjugate.insert(conjugate.end(), tail.begin(), tail.end());
          const special::Answer a = special::ask(m, z), b = special::ask(m, conjugate);
          const std::uint64_t sign = std::uint64_t(1) << (8 * m.part_size() - 1);
          const bool nan = Value(any_nan).matches(m.is_float(), a.parts[1]);
          EXPECT_EQ(a.parts[0], b.parts[0]) << m.name << " " << x << " " << y;
          EXPECT_EQ(a.parts[1], nan ? b.parts[1] : b.parts[1] ^ sign) << m.name << " " << x << " " << y;
          EXPECT_EQ(a.ending.status, b.ending.status) << m.name << " " << x << " " << y;
        }
  }
}

TEST(ComplexSqrt, InfinitiesAndNans) {
  // The sign of the infinity beside the NaN is left open.
  check_both("Sqrt", {{{-inf, any_nan}, {default_nan, inf}},
                      {{1.0, inf}, {inf, inf}},
                      {{any_nan, -inf}, {inf, -inf}},
                      {{-inf, inf}, {inf, inf}},
                      {{inf, 1.0}, {inf, 0.0}},
                      {{inf, -1.0}, {inf, -0.0}},
                      {{inf, any_nan}, {inf, default_nan}},
                      {{-inf, 1.0}, {0.0, inf}},
                      {{-inf, -1.0}, {0.0, -inf}},
                      {{any_nan, 0.0}, {default_nan, default_nan}},
                      {{0.0, any_nan}, {default_nan, default_nan}},
                      {{any_nan, any_nan}, {default_nan, default_nan}}});
}

TEST(ComplexSqrt, SidesOfTheCutAndExactRoots) {
  check_both("Sqrt", {{{0.0, 0.0}, {0.0, 0.0}},
                      {{-0.0, -0.0}, {0.0, -0.0}},
                      {{4.0, 0.0}, {2.0, 0.0}},
                      {{4.0, -0.0}, {2.0, -0.0}},
                      {{-4.0, 0.0}, {0.0, 2.0}},
                      {{-4.0, -0.0}, {0.0, -2.0}},
                      {{0.0, 8.0}, {2.0, 2.0}},
                      {{-0.0, -8.0}, {2.0, -2.0}},
                      {{3.0, 4.0}, {2.0, 1.0}},
                      {{-5.0, -12.0}, {2.0, -3.0}}});
  check_conjugates("Sqrt", {{}});
}

TEST(ComplexSqrt, EndsOfTheRange) {
  special::check("Sqrt", Type::c64,
                 {{{0x1p1022, 0x1p-1074}, {0x1p511, 0.0}},
                  {{0x1.8p1023, 0x1.fffffffffffffp1023}, {0x1p512, 0x1.fffffffffffffp510}},
                  {{1.0, -0x1p-1072}, {1.0, -0x1p-1073}},
                  {{-0x1p-1074, 0.0}, {0.0, 0x1p-537}},
                  {{0.0, 0x1p-1073}, {0x1p-537, 0x1p-537}},
                  {{-0x1p1000, 0x1.8p-520}, {0x1.8p-1021, 0x1p500}}});
  special::check("Sqrt", Type::c32, {{{0x1p126, 0x1p-149}, {0x1p63, 0.0}}, {{-0x1p-148, 0.0}, {0.0, 0x1p-74}}});
}

TEST(ComplexLog, SpecialArguments) {
  // The multiples of pi/4 that a double and a float hold, and those over ln 10.
  struct Constants {
    const char* family;
    Type type;
    double quarter, half, three_quarters, whole;
  };
  const Constants all[] = {
      {"Ln", Type::c64, 0x1.921fb54442d18p-1, 0x1.921fb54442d18p+0, 0x1.2d97c7f3321d2p+1, 0x1.921fb54442d18p+1},
      {"Ln", Type::c32, 0x1.921fb6p-1, 0x1.921fb6p+0, 0x1.2d97c8p+1, 0x1.921fb6p+1},
      {"Log10", Type::c64, 0x1.5d47c4cb2fba1p-2, 0x1.5d47c4cb2fba1p-1, 0x1.05f5d39863cb9p+0, 0x1.5d47c4cb2fba1p+0},
      {"Log10", Type::c32, 0x1.5d47c4p-2, 0x1.5d47c4p-1, 0x1.05f5d4p+0, 0x1.5d47c4p+0}};
  for (const Constants& c : all)
    for (double sign : {1.0, -1.0}) {
      const double zero = 0 * sign, infinite = inf * sign;
      special::check(c.family, c.type,
                     {{{-0.0, zero}, {-inf, c.whole * sign}, kelStatusSingularity},
                      {{0.0, zero}, {-inf, zero}, kelStatusSingularity},
                      {{1.5, infinite}, {inf, c.half * sign}},
                      {{-1.5, infinite}, {inf, c.half * sign}},
                      {{-inf, 1.5 * sign}, {inf, c.whole * sign}},
                      {{inf, 1.5 * sign}, {inf, zero}},
                      {{-inf, infinite}, {inf, c.three_quarters * sign}},
                      {{inf, infinite}, {inf, c.quarter * sign}},
                      {{infinite, any_nan}, {inf, default_nan}},
                      {{any_nan, infinite}, {inf, default_nan}},
                      {{any_nan, sign}, {default_nan, default_nan}},
                      {{sign, any_nan}, {default_nan, default_nan}},
                      {{any_nan, any_nan}, {default_nan, default_nan}},
                      {{1.0, zero}, {0.0, zero}}});
    }
  for (const char* family : {"Ln", "Log10"}) check_conjugates(family, {{}});
}

/// ln(1 + x^2) / 2 for tiny x, and the angles there; the ends of the range.
TEST(ComplexLog, NextToOneAndTheEndsOfTheRange) {
  special::check("kelsLn_64fc_A53", {{{1.0, 0x1p-520}, {0x1p-1041, 0x1p-520}},
                                     {{0x1p-500, -1.0}, {0x1p-1001, -0x1.921fb54442d18p+0}},
                                     {{1.0, 0x1p-600}, {0.0, 0x1p-600}},
                                     {{0x1p1000, 0x1p-60}, {0x1.5a92d6d005c94p+9, 0x1p-1060}},
                                     {{-0x1p1000, -0x1p-60}, {0x1.5a92d6d005c94p+9, -0x1.921fb54442d18p+1}},
                                     {{0x1p-1074, 0.0}, {-0x1.74385446d71c3p+9, 0.0}}});
}

TEST(ComplexPow, Rules) {
  check_both("Pow", {{{any_nan, inf, 0.0, -0.0}, {1.0, 0.0}},
                     {{0.0, 0.0, 0.0, 0.0}, {1.0, 0.0}},
                     {{0.0, -0.0, 0.5, 7.0}, {0.0, -0.0}},
                     {{-0.0, 0.0, 3.0, 0.0}, {0.0, 0.0}},
                     {{-0.0, 0.0, -3.0, 0.0}, {inf, 0.0}, kelStatusSingularity},
                     {{0.0, 0.0, -3.0, -0.0}, {inf, 0.0}, kelStatusSingularity},
                     {{0.0, 0.0, -1.0, 1.0}, {default_nan, default_nan}, kelStatusDomain},
                     {{0.0, -0.0, 0.0, 1.0}, {default_nan, default_nan}, kelStatusDomain},
                     {{0.0, 0.0, any_nan, 1.0}, {default_nan, default_nan}},
                     {{1.0, 0.0, 1.0, any_nan}, {default_nan, default_nan}},
                     {{inf, any_nan, 1.0, 0.0}, {default_nan, default_nan}}});
}

TEST(ComplexPow, Infinities) {
  check_both("Pow", {{{inf, 1.0, 2.0, 0.0}, {inf, 0.0}},
                     {{inf, inf, 2.0, 0.0}, {0.0, inf}},
                     {{-inf, -1.0, 0.5, 0.0}, {0.0, -inf}},
                     {{-inf, 1.0, -1.0, 0.0}, {-0.0, 0.0}},
                     {{1.0, inf, -0.5, 1.0}, {0.0, 0.0}},
                     {{1.0, inf, 0.5, 1.0}, {default_nan, default_nan}, kelStatusDomain},
                     {{0.5, 0.5, inf, 0.0}, {0.0, 0.0}},
                     {{0.5, 2.0, -inf, 1.0}, {0.0, 0.0}},
                     {{0.5, 2.0, inf, 1.0}, {default_nan, default_nan}, kelStatusDomain},
                     {{-0.5, 2.0, 1.0, inf}, {0.0, 0.0}},
                     {{2.0, 0.0, 0.0, inf}, {default_nan, default_nan}, kelStatusDomain}});
}

/// Zeros of a part, and parts next to zero, at full precision.
TEST(ComplexPow, ExactPartsAndTheEndsOfTheRange) {
  for (const char* function : {"kelsPow_32fc_A24", "kelsPow_64fc_A53"})
    special::check(function, {{{-2.0, 0.0, 2.0, 0.0}, {4.0, 0.0}},
                              {{-2.0, -0.0, 3.0, 0.0}, {-8.0, -0.0}},
                              {{0.0, 2.0, 2.0, 0.0}, {-4.0, 0.0}},
                              {{1.0, 1.0, 4.0, 0.0}, {-4.0, 0.0}},
                              {{1.0, -1.0, 3.0, 0.0}, {-2.0, -2.0}},
                              {{-4.0, 0.0, 0.5, 0.0}, {0.0, 2.0}},
                              {{0x1p-60, 1.0, 2.0, 0.0}, {-1.0, 0x1p-59}},
                              {{-1.0, 0x1p-60, 5.0, 0.0}, {-1.0, 0x1.4p-58}},
                              {{1.0, 0.0, 3.0, 0x1p120}, {1.0, 0.0}},
                              {{0x1p-100, 0.0, 40.0, 0.0}, {0.0, 0.0}}});
  special::check("Pow", Type::c32, {{{0x1p100, 0x1p100, 4.0, 0.0}, {-inf, 0.0}, kelStatusOverflow}});
  special::check("kelsPow_64fc_A53", {{{0x1p500, 0x1p-1000, 2.0, 0.0}, {0x1p1000, 0x1p-499}},
                                      {{0x1p1000, 0x1p-1074, -1.0, 0.0}, {0x1p-1000, -0.0}},
                                      {{0x1p-511, 0x1p-520, 2.0, 0.0}, {0x1.ffff8p-1023, 0x1p-1030}},
                                      {{1.0, 0x1p-1000, 0.0, 0x1p1000}, // ln |z| = 2^-2001 counts
                                       {0x1.78b56362cef38p-2, 0x1.78b56362cef38p-1003}}});
}

/// Terms of w ln z that cancel, and angles that leave double-double no significance.
TEST(ComplexPow, AnglesBeyondDoubleDouble) {
  special::check(
      "kelsPow_64fc_A53",
      {{{0x1.25e34573b3261p52, 0x1.535a35514631p51, 3.0, 0.0}, // x^2 - 3 y^2 = 1: the real part is x
        {0x1.25e34573b3261p52, 0x1.2a27cbc68b95ap157}},
       {{1.0, 0x1p-100, 1.0, -0x1p101}, {0x1.d8e64b8d4ddaep2, 0x1.3b44325e33e74p-300}}, // e^2 and y^3 / 6 of it
       {{0x1.3333333333333p-1, 0x1.999999999999ap-1, 0x1p58, 0.0}, {0x1.bdae37f06bf5p5, 0x1.2ba16af597007p9}}});
  special::check("Pow", Type::c64,
                 {{{2.0, 1.0, 0x1p1000, 0.0}, {-inf, -inf}, kelStatusOverflow},
                  {{2.0, 1.0, 0x1p1000, 0x1p900}, {-inf, inf}, kelStatusOverflow},
                  {{2.0, -1.0, -0x1p1000, 0x1p999}, {-0.0, -0.0}}});
  special::check("Pow", Type::c32,
                 {{{2.0, 1.0, 0x1p120, 0.0}, {-inf, -inf}, kelStatusOverflow},
                  {{2.0, -1.0, 0x1p110, 0x1p105}, {inf, inf}, kelStatusOverflow}});
}

TEST(ComplexPow, RealOperandsAndOneExponent) {
  const double bases[] = {0.0, 0x1p-130, 0.3125, 1.0, 1.0625, 77.0, 0x1p90, inf};
  const double exponents[] = {-inf, -30.5, -1.0, 0.4375, 1.0, 2.0, 19.0, inf};
  const double parts[] = {-3.0, -0.0, 0.875, 0x1p70};
  for (const harness::Function& m : harness::all_functions()) {
    if (m.family != "Pow" || !m.complex_source()) continue;
    const std::string type = m.is_float() ? "32f" : "64f", suffix(m.suffix);
    const harness::Function& real = *harness::find_function("kelsPow_" + type + "_" + suffix);
    const harness::Function& one = *harness::find_function("kelsPowx_" + type + "c_" + suffix);
    for (double x : bases)
      for (double c : exponents)
        EXPECT_EQ(special::ask(m, {x, 0.0, c, 0.0}).parts[0], special::ask(real, {x, c}).parts[0])
            << m.name << " " << x << " " << c;
    for (double x : parts)
      for (double y : parts)
        for (double c : exponents)
          for (double d : parts)
            EXPECT_EQ(special::ask(m, {x, y, c, d}).parts, special::ask(one, {x, y, c, d}).parts)
                << m.name << " " << x << " " << y << " " << c << " " << d;
  }
  check_conjugates("Pow", {{2.5, 0.0}, {-3.0, 0.0}});
}

} // namespace
