// The inverse error functions and the inverse normal distribution: special values, the first row of the tables in its
// own arithmetic, the borders of the vector formula and the deep tail.
#include "special.hpp"

namespace {

using harness::Type;
using special::any_nan;
using special::bits;
using special::default_nan;
using special::inf;

TEST(ErfInv, SpecialValues) {
  special::check_real("ErfInv", {
                                    {{1.0}, {inf}, kelStatusSingularity},
                                    {{-1.0}, {-inf}, kelStatusSingularity},
                                    {{1.0 + 0x1p-23}, {default_nan}, kelStatusDomain},
                                    {{-1.5}, {default_nan}, kelStatusDomain},
                                    {{inf}, {default_nan}, kelStatusDomain},
                                    {{-inf}, {default_nan}, kelStatusDomain},
                                    {{0.0}, {0.0}},
                                    {{-0.0}, {-0.0}},
                                    {{any_nan}, {any_nan}},
                                });
  special::check("ErfInv", Type::f64, {{{1.0 + 0x1p-52}, {default_nan}, kelStatusDomain}});
}

TEST(ErfcInv, SpecialValues) {
  special::check_real("ErfcInv", {
                                     {{0.0}, {inf}, kelStatusSingularity},
                                     {{-0.0}, {inf}, kelStatusSingularity},
                                     {{2.0}, {-inf}, kelStatusSingularity},
                                     {{-0x1p-149}, {default_nan}, kelStatusDomain},
                                     {{2.0 + 0x1p-22}, {default_nan}, kelStatusDomain},
                                     {{inf}, {default_nan}, kelStatusDomain},
                                     {{-inf}, {default_nan}, kelStatusDomain},
                                     {{1.0}, {0.0}},
                                     {{any_nan}, {any_nan}},
                                 });
}

TEST(CdfNormInv, SpecialValues) {
  special::check_real("CdfNormInv", {
                                        {{0.0}, {-inf}, kelStatusSingularity},
                                        {{-0.0}, {-inf}, kelStatusSingularity},
                                        {{1.0}, {inf}, kelStatusSingularity},
                                        {{-0x1p-149}, {default_nan}, kelStatusDomain},
                                        {{-0.25}, {default_nan}, kelStatusDomain},
                                        {{1.5}, {default_nan}, kelStatusDomain},
                                        {{1.0 + 0x1p-23}, {default_nan}, kelStatusDomain},
                                        {{0x1p127}, {default_nan}, kelStatusDomain},
                                        {{inf}, {default_nan}, kelStatusDomain},
                                        {{-inf}, {default_nan}, kelStatusDomain},
                                        {{0.5}, {0.0}},
                                        {{any_nan}, {any_nan}},
                                    });
  special::check("CdfNormInv", Type::f64, {{{0x1p1023}, {default_nan}, kelStatusDomain}});
}

// At the middle of a row the polynomial is its first coefficient.
TEST(InverseRows, FirstRowAtItsMiddle) {
  special::check("kelsErfInv_64f_A53", {{{0.0625}, {0.0625 * (0.8871351778507233 + 2.5137890581822675e-09)}},
                                        {{-0.0625}, {-0.0625 * (0.8871351778507233 + 2.5137890581822675e-09)}}});
  special::check("kelsCdfNormInv_64f_A53", {{{0.46875}, {-0.0625 * (1.254598617553711 - 1.3823915760862766e-08)}},
                                            {{0.53125}, {0.0625 * (1.254598617553711 - 1.3823915760862766e-08)}}});
}

// Below 2^-53 x sqrt(pi) / 2, rounded once. The last argument's result, 0.061 units below the least normal number, is
// rounded up to it.
TEST(ErfInv, TinyArguments) {
  const double unit = 0x1p-1074;
  special::check("ErfInv", Type::f64,
                 {{{unit}, {unit}, kelStatusOk, subject::underflow},
                  {{-unit}, {-unit}, kelStatusOk, subject::underflow},
                  {{3 * unit}, {3 * unit}, kelStatusOk, subject::underflow},
                  {{-4 * unit}, {-4 * unit}, kelStatusOk, subject::underflow},
                  {{5 * unit}, {4 * unit}, kelStatusOk, subject::underflow},
                  {{bits(0x120DD750429B6D)}, {0x1p-1022}}});
}

// Where the rows end and the deep tail begins, and where that ends.
TEST(DeepTail, Borders) {
  special::check("kelsErfcInv_64f_A53", {{{0x1p-53}, {0x1.7744f8f74e94ap+2}},
                                         {{0x1p-54}, {0x1.7afb48dc96627p+2}},
                                         {{0x1p-1074}, {0x1.b369a6244e684p+4}}});
  special::check("kelsErfcInv_32f_A24",
                 {{{0x1p-24}, {0x1.ea8f96p+1}}, {{0x1p-25}, {0x1.f5a88ap+1}}, {{0x1p-149}, {0x1.40a27cp+3}}});
  special::check("kelsCdfNormInv_64f_A53", {{{0x1p-54}, {-0x1.095b059d67c4cp+3}},
                                            {{0x1p-55}, {-0x1.0bfafe7a91e68p+3}},
                                            {{0x1p-1074}, {-0x1.33bd3f27fcd03p+5}}});
  special::check("kelsCdfNormInv_32f_A24",
                 {{{0x1p-25}, {-0x1.5ae102p+2}}, {{0x1p-26}, {-0x1.62b9dcp+2}}, {{0x1p-149}, {-0x1.c3e2bap+3}}});
}

} // namespace
