// The inverse hyperbolic functions where their arguments' roundings meet the result's: atanh of odd tiny numbers, a
// domain error beside an ordinary element.
#include "special.hpp"

#include <cmath>

namespace {

using special::Row;

// From 2^-70 to 2^-30, where 1 + x and 1 - x lose some or all bits of x, atanh x and asinh x round to x: x^3 / 3 is
// below a hundredth of its last place.
TEST(InverseHyperbolic, TinyNumbersOfAllBits) {
  std::vector<Row> rows;
  for (int exponent = -70; exponent <= -30; ++exponent)
    for (const double m : {0x1p+0, 0x1.0000000000001p+0, 0x1.5555555555555p+0, 0x1.c0a9adb5d5836p+0,
                           0x1.fffffffffe682p+0, 0x1.fffffffffffffp+0}) {
      const double x = std::ldexp(m, exponent);
      rows.push_back({{x}, {x}});
      rows.push_back({{-x}, {-x}});
    }
  special::check("kelsAtanh_64f_A53", rows);
  special::check("kelsAsinh_64f_A53", rows);
}

TEST(InverseHyperbolic, DomainErrorBesideAnOrdinaryElement) {
  const driver::Callable acosh(*harness::find_function("kelsAcosh_64f_A53"));
  const double x[] = {0.5, 2.0};
  double y[2] = {};
  const driver::Ending ending = acosh.call({x, nullptr, nullptr, y, nullptr, 2});
  EXPECT_EQ(ending.status, kelStatusDomain);
  EXPECT_EQ(ending.flags(), driver::invalid);
  EXPECT_TRUE(std::isnan(y[0]));
  EXPECT_EQ(y[1], 0x1.5124271980435p+0);
}

} // namespace
