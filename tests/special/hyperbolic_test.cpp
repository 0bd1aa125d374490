// The hyperbolic functions and their inverses: special values, ranges, the borders of overflow and of the formulas.
#include "special.hpp"

#include <cmath>

namespace {

using harness::Type;
using special::any_nan;
using special::default_nan;
using special::inf;
using special::Row;

// Odd functions give tiny arguments back.
std::vector<Row> odd(std::vector<Row> rows) {
  for (const double x : {0.0, 0x1p-149, 0x1p-126, 0x1.8p-127, 0x1p-60})
    for (const double signed_x : {x, -x}) rows.push_back({{signed_x}, {signed_x}});
  return rows;
}
const std::vector<Row> tiny_doubles = {{{0x1p-1074}, {0x1p-1074}},
                                       {{-0x1p-1022}, {-0x1p-1022}},
                                       {{0x1.8p-1023}, {0x1.8p-1023}},
                                       {{-0x1p-600}, {-0x1p-600}}};

TEST(Hyperbolic, SpecialValues) {
  special::check_real("Sinh", odd({{{inf}, {inf}}, {{-inf}, {-inf}}, {{any_nan}, {any_nan}}}));
  special::check_real("Cosh", {{{0.0}, {1.0}},
                               {{-0.0}, {1.0}},
                               {{0x1p-149}, {1.0}},
                               {{-0x1p-60}, {1.0}},
                               {{inf}, {inf}},
                               {{-inf}, {inf}},
                               {{any_nan}, {any_nan}}});
  special::check_real(
      "Tanh", odd({{{inf}, {1.0}}, {{-inf}, {-1.0}}, {{0x1p100}, {1.0}}, {{-25.0}, {-1.0}}, {{any_nan}, {any_nan}}}));
  for (const char* family : {"Sinh", "Tanh", "Asinh", "Atanh"}) special::check(family, Type::f64, tiny_doubles);
}

TEST(Hyperbolic, BorderOfOverflow) {
  for (const char* family : {"Sinh", "Cosh"}) {
    const double sign = family[0] == 'S' ? -1 : 1;
    special::check_real(family, {{{711.0}, {inf}, kelStatusOverflow}, {{-1000.0}, {sign * inf}, kelStatusOverflow}});
    special::check(family, Type::f32, {{{0x1.65a9fap+6}, {inf}, kelStatusOverflow}});
    special::check(family, Type::f64, {{{0x1.633ce8fb9f87ep+9}, {inf}, kelStatusOverflow}});
  }
  for (const char* function : {"kelsSinh_32f_A24", "kelsCosh_32f_A24"})
    special::check(function, {{{0x1.65a9f8p+6}, {0x1.ffffd8p+127}}});
  for (const char* function : {"kelsSinh_64f_A53", "kelsCosh_64f_A53"})
    special::check(function, {{{0x1.633ce8fb9f87dp+9}, {0x1.ffffffffffd3bp+1023}}});
}

TEST(InverseHyperbolic, SpecialValues) {
  special::check_real("Asinh", odd({{{inf}, {inf}}, {{-inf}, {-inf}}, {{any_nan}, {any_nan}}}));
  special::check_real("Acosh", {{{1.0}, {0.0}},
                                {{inf}, {inf}},
                                {{0x1.fffffep-1}, {default_nan}, kelStatusDomain},
                                {{0.0}, {default_nan}, kelStatusDomain},
                                {{-2.0}, {default_nan}, kelStatusDomain},
                                {{-inf}, {default_nan}, kelStatusDomain},
                                {{any_nan}, {any_nan}}});
  special::check_real("Atanh", odd({{{1.0}, {inf}, kelStatusSingularity},
                                    {{-1.0}, {-inf}, kelStatusSingularity},
                                    {{0x1.000002p+0}, {default_nan}, kelStatusDomain},
                                    {{-2.0}, {default_nan}, kelStatusDomain},
                                    {{inf}, {default_nan}, kelStatusDomain},
                                    {{-inf}, {default_nan}, kelStatusDomain},
                                    {{any_nan}, {any_nan}}}));
}

// Next to the ends of the domain, where x^2 would overflow, and next to where it no longer counts.
TEST(InverseHyperbolic, EndsOfTheDomain) {
  special::check("kelsAsinh_64f_A53", {{{0x1.fffffffffffffp+1023}, {0x1.633ce8fb9f87ep+9}},
                                       {{-0x1p+501}, {-0x1.5bf5bafff56cep+8}},
                                       {{0x1p-27}, {0x1p-27}}});
  special::check("kelsAcosh_64f_A53", {{{0x1.fffffffffffffp+1023}, {0x1.633ce8fb9f87ep+9}},
                                       {{0x1.0000000000001p+0}, {0x1.6a09e667f3bccp-26}},
                                       {{2.0}, {0x1.5124271980435p+0}}});
  special::check("kelsAtanh_64f_A53", {{{0x1.fffffffffffffp-1}, {0x1.2b708872320e2p+4}}});
  special::check("kelsAsinh_32f_A24", {{{0x1.fffffep+127}, {0x1.65a9f8p+6}}});
  special::check("kelsAcosh_32f_A24", {{{0x1.000002p+0}, {0x1p-11}}});
  special::check("kelsAtanh_32f_A24", {{{-0x1.fffffep-1}, {-0x1.154246p+3}}});
}

} // namespace
