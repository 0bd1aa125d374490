// Powers: every special case of C's Annex F, codes at the borders of the range, exact results.
#include "special.hpp"

#include <cmath>
#include <string>

namespace {

using special::any_nan;
using special::default_nan;
using special::inf;
using special::Row;

const std::vector<Row> annex_f = {
    // a zero exponent and a base of 1
    {{any_nan, 0.0}, {1.0}},
    {{0.0, -0.0}, {1.0}},
    {{inf, 0.0}, {1.0}},
    {{-3.0, -0.0}, {1.0}},
    {{1.0, any_nan}, {1.0}},
    {{1.0, -inf}, {1.0}},
    {{-1.0, inf}, {1.0}},
    {{-1.0, -inf}, {1.0}},
    {{any_nan, 1.0}, {any_nan}},
    {{2.0, any_nan}, {any_nan}},
    {{-0.0, any_nan}, {any_nan}},
    // zero bases
    {{0.0, -1.0}, {inf}, kelStatusSingularity},
    {{-0.0, -3.0}, {-inf}, kelStatusSingularity},
    {{-0.0, -2.0}, {inf}, kelStatusSingularity},
    {{-0.0, -0.5}, {inf}, kelStatusSingularity},
    {{-0.0, -inf}, {inf}},
    {{-0.0, 5.0}, {-0.0}},
    {{-0.0, 4.0}, {0.0}},
    {{-0.0, 0.5}, {0.0}},
    {{0.0, inf}, {0.0}},
    // infinite bases and exponents
    {{-inf, -3.0}, {-0.0}},
    {{-inf, -2.0}, {0.0}},
    {{-inf, 3.0}, {-inf}},
    {{-inf, 2.5}, {inf}},
    {{inf, -0.25}, {0.0}},
    {{inf, inf}, {inf}},
    {{0.5, -inf}, {inf}},
    {{-0.5, inf}, {0.0}},
    {{-2.0, inf}, {inf}},
    {{2.0, -inf}, {0.0}},
    // negative bases
    {{-2.0, 0.5}, {default_nan}, kelStatusDomain},
    {{-1.0, 0x1.8p20}, {1.0}},
    {{-1.0, 0x1.000002p23}, {-1.0}},
    {{-1.0, 0x1p120}, {1.0}},
};
const std::vector<Row> beyond_the_range = {
    {{2.0, 0x1p100}, {inf}, kelStatusOverflow},     {{-2.0, 1025.0}, {-inf}, kelStatusOverflow},
    {{-2.0, -1077.0}, {-0.0}, kelStatusUnderflow},  {{0.5, 0x1.8p120}, {0.0}, kelStatusUnderflow},
    {{1.5, -0x1.8p127}, {0.0}, kelStatusUnderflow},
};

TEST(Pow, SpecialCases) {
  special::check_real("Pow", annex_f);
  special::check_real("Pow", beyond_the_range);
}

TEST(Pow, BordersOfTheRange) {
  for (const char* family : {"Pow", "Powx"}) {
    const std::string name = std::string("kels") + family;
    special::check(name + "_64f_A53", {{{2.0, 1023.0}, {0x1p1023}},
                                       {{0x1.fffffffffffffp1023, 1.0}, {0x1.fffffffffffffp1023}},
                                       {{2.0, -1022.0}, {0x1p-1022}},
                                       {{-2.0, -1023.0}, {-0x1p-1023}, kelStatusUnderflow},
                                       {{2.0, -1074.0}, {0x1p-1074}, kelStatusUnderflow},
                                       {{0x1p-1074, 1.0}, {0x1p-1074}, kelStatusUnderflow},
                                       {{0x1p-1074, -0.5}, {0x1p537}},
                                       {{0.5, 1076.0}, {0.0}, kelStatusUnderflow}});
    special::check(name + "_32f_A24", {{{2.0, 127.0}, {0x1p127}},
                                       {{2.0, 128.0}, {inf}, kelStatusOverflow},
                                       {{0x1.fffffep127, 1.0}, {0x1.fffffep127}},
                                       {{2.0, -126.0}, {0x1p-126}},
                                       {{-2.0, -149.0}, {-0x1p-149}, kelStatusUnderflow},
                                       {{0x1p-149, -0.5}, {0x1.6a09e6p74}},
                                       {{0.5, 151.0}, {0.0}, kelStatusUnderflow}});
  }
}

TEST(Pow, ExactPowers) {
  std::vector<Row> doubles, floats;
  for (int base = -12; base <= 12; ++base)
    for (int n = 2; n <= 7; ++n) {
      double power = 1;
      for (int i = 0; i < n; ++i) power *= base;
      if (base == 0) continue;
      doubles.push_back({{double(base), double(n)}, {power}});
      if (std::abs(power) < 0x1p24) floats.push_back({{double(base), double(n)}, {power}});
      if (base > 0) doubles.push_back({{power * power, 0.5}, {power}});
    }
  special::check("kelsPow_64f_A53", doubles);
  special::check("kelsPow_32f_A24", floats);
}

} // namespace
