// The logarithms and e^x - 1: special values, and the results that are exact at every accuracy or at full precision.
#include "special.hpp"

#include <cmath>
#include <string>

namespace {

using harness::Type;
using special::any_nan;
using special::default_nan;
using special::inf;
using special::Row;

const std::vector<Row> of_positive = {
    {{0.0}, {-inf}, kelStatusSingularity},
    {{-0.0}, {-inf}, kelStatusSingularity},
    {{-1.0}, {default_nan}, kelStatusDomain},
    {{-0x1p-126}, {default_nan}, kelStatusDomain},
    {{-inf}, {default_nan}, kelStatusDomain},
    {{-0x1p-149}, {default_nan}, kelStatusDomain},
    {{1.0}, {0.0}},
    {{inf}, {inf}},
    {{any_nan}, {any_nan}},
};

TEST(Logarithm, SpecialValues) {
  special::check_real("Ln", of_positive);
  special::check_real("Log10", of_positive);
}

TEST(Logarithm, PowersOfTenAreExact) {
  std::vector<Row> doubles, floats;
  for (int n = 0; n <= 22; ++n)
    doubles.push_back({{std::strtod(("1e" + std::to_string(n)).c_str(), nullptr)}, {double(n)}});
  for (int n = 0; n <= 10; ++n)
    floats.push_back({{std::strtod(("1e" + std::to_string(n)).c_str(), nullptr)}, {double(n)}});
  special::check("kelsLog10_64f_A53", doubles);
  special::check("kelsLog10_32f_A24", floats);
}

// Subnormal arguments and the last octave leave the vector formula: the results next to both borders.
TEST(Logarithm, BordersOfTheRange) {
  special::check("kelsLn_64f_A53", {{{0x1p-1074}, {-0x1.74385446d71c3p+9}},
                                    {{0x1.fffffffffffffp-1023}, {-0x1.6232bdd7abcd2p+9}},
                                    {{0x1.fffffffffffffp+1023}, {0x1.62e42fefa39efp+9}}});
  special::check("kelsLn_32f_A24", {{{0x1p-149}, {-0x1.9d1dap+6}}, {{0x1.fffffep+127}, {0x1.62e43p+6}}});
}

TEST(Log1p, SpecialValues) {
  special::check_real("Log1p", {
                                   {{-1.0}, {-inf}, kelStatusSingularity},
                                   {{-1.5}, {default_nan}, kelStatusDomain},
                                   {{-inf}, {default_nan}, kelStatusDomain},
                                   {{0.0}, {0.0}},
                                   {{-0.0}, {-0.0}},
                                   {{0x1p-149}, {0x1p-149}},
                                   {{-0x1p-126}, {-0x1p-126}},
                                   {{0x1p-100}, {0x1p-100}},
                                   {{inf}, {inf}},
                                   {{any_nan}, {any_nan}},
                               });
  special::check("Log1p", Type::f64, {{{0x1p-1074}, {0x1p-1074}}, {{-0x1p-600}, {-0x1p-600}}});
  special::check("kelsLog1p_64f_A53", {{{0x1p-53}, {0x1p-53}}, {{0x1.8p1000}, {0x1.5ac6bd17df487p+9}}});
}

TEST(Expm1, SpecialValues) {
  special::check_real("Expm1", {
                                   {{-inf}, {-1.0}},
                                   {{-2000.0}, {-1.0}},
                                   {{-100.0}, {-1.0}},
                                   {{710.0}, {inf}, kelStatusOverflow},
                                   {{0.0}, {0.0}},
                                   {{-0.0}, {-0.0}},
                                   {{0x1p-149}, {0x1p-149}},
                                   {{-0x1p-126}, {-0x1p-126}},
                                   {{-0x1p-100}, {-0x1p-100}},
                                   {{inf}, {inf}},
                                   {{any_nan}, {any_nan}},
                               });
  special::check("Expm1", Type::f32, {{{88.5}, {0x1.99b9880000000p+127}}, {{0x1.62e43p+6}, {inf}, kelStatusOverflow}});
  special::check("kelsExpm1_64f_A53", {{{0x1.62e42fefa39efp+9}, {0x1.fffffffffff2ap+1023}},
                                       {{0x1.62e42fefa39fp+9}, {inf}, kelStatusOverflow},
                                       {{0x1p-1074}, {0x1p-1074}}});
}

} // namespace
