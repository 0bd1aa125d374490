// Quotients, reciprocals, roots and algebraic powers: special results, codes and flags, the borders of overflow and
// underflow, exact results, and the cases that only a correct rounding gets right.
#include "special.hpp"

#include <cmath>

namespace {

using harness::Type;
using special::any_nan, special::bits, special::default_nan, special::inf, special::Row;

/// The type's range: smallest subnormal, smallest normal, largest finite number, ulp of 1.
struct Limits {
  Type type;
  double tiny, normal, largest, ulp;
};
constexpr Limits floats{Type::f32, 0x1p-149, 0x1p-126, 0x1.fffffep127, 0x1p-23};
constexpr Limits doubles{Type::f64, 0x1p-1074, 0x1p-1022, 0x1.fffffffffffffp1023, 0x1p-52};

template <class F> void for_both(F rows) {
  for (const Limits& l : {floats, doubles}) rows(l);
}

TEST(Root, NansAreQuietedWithoutCode) {
  for (const char* family : {"Inv", "Sqrt", "InvSqrt", "Cbrt", "InvCbrt", "Pow2o3", "Pow3o2"}) {
    special::check_real(family, {{{any_nan}, {any_nan}}});
    special::check(family, Type::f64, {{{bits(0xFFF8000000000123)}, {bits(0xFFF8000000000123)}}});
    special::check(family, Type::f32, {{{bits(0xFFC00123)}, {bits(0xFFC00123)}}});
  }
  special::check_real("Div", {{{any_nan, 0.0}, {any_nan}}, {{0.0, any_nan}, {any_nan}}, {{inf, any_nan}, {any_nan}}});
  special::check_real("Hypot", {{{any_nan, 1.0}, {any_nan}}, {{0.0, any_nan}, {any_nan}}});
}

TEST(Root, Quotients) {
  for_both([](const Limits& l) {
    special::check("Div", l.type,
                   {{{6.0, -3.0}, {-2.0}},
                    {{0.0, -3.0}, {-0.0}},
                    {{-0.0, l.tiny}, {-0.0}},
                    {{inf, -0.0}, {-inf}},
                    {{-inf, l.largest}, {-inf}},
                    {{1.0, -inf}, {-0.0}},
                    {{0.0, inf}, {0.0}},
                    {{1.0, -0.0}, {-inf}, kelStatusSingularity},
                    {{-l.tiny, 0.0}, {-inf}, kelStatusSingularity},
                    {{0.0, -0.0}, {default_nan}, kelStatusDomain},
                    {{-inf, inf}, {default_nan}, kelStatusDomain},
                    {{l.largest, 1.0}, {l.largest}},
                    {{-l.largest, 0.5}, {-inf}, kelStatusOverflow},
                    {{1.0, l.tiny}, {inf}, kelStatusOverflow},
                    {{l.normal, 1.0}, {l.normal}},
                    {{-l.normal, 2.0}, {-l.normal / 2}, kelStatusUnderflow}, // exact
                    {{l.tiny, -1.0}, {-l.tiny}, kelStatusUnderflow},
                    {{l.tiny, 2.0}, {0.0}, kelStatusUnderflow},
                    {{3 * l.tiny, 2.0}, {2 * l.tiny}, kelStatusUnderflow},
                    {{l.normal, 1 + l.ulp}, {l.normal - l.tiny}, kelStatusUnderflow},
                    // Rounded up to the smallest normal number from below.
                    {{2 * l.normal - l.tiny, 2.0}, {l.normal}, kelStatusUnderflow},
                    {{l.tiny, l.tiny}, {1.0}},
                    {{l.normal, l.normal - l.tiny}, {1 + l.ulp}}});
    special::check("Inv", l.type,
                   {{{0.0}, {inf}, kelStatusSingularity},
                    {{-0.0}, {-inf}, kelStatusSingularity},
                    {{inf}, {0.0}},
                    {{-inf}, {-0.0}},
                    {{-4.0}, {-0.25}},
                    {{1 / l.normal}, {l.normal}},
                    {{l.normal}, {1 / l.normal}},
                    {{-2 / l.normal}, {-l.normal / 2}, kelStatusUnderflow},
                    {{l.largest}, {l.normal / 4}, kelStatusUnderflow},
                    {{l.normal / 4 + l.tiny}, {(4 - 16 * l.ulp) / l.normal}},
                    {{l.normal / 4}, {inf}, kelStatusOverflow},
                    {{-l.tiny}, {-inf}, kelStatusOverflow}});
  });
}

TEST(Root, SquareRoots) {
  for_both([](const Limits& l) {
    const double below_one = 1 - l.ulp / 2, above_one = 1 + l.ulp;
    special::check("Sqrt", l.type,
                   {{{0.0}, {0.0}},
                    {{-0.0}, {-0.0}},
                    {{inf}, {inf}},
                    {{2.25}, {1.5}},
                    {{below_one}, {below_one}},
                    {{above_one}, {1.0}},
                    {{4 * l.normal}, {2 * std::sqrt(l.normal)}},
                    {{l.normal / 4}, {std::sqrt(l.normal) / 2}},
                    {{-l.tiny}, {default_nan}, kelStatusDomain},
                    {{-1.0}, {default_nan}, kelStatusDomain},
                    {{-inf}, {default_nan}, kelStatusDomain}});
    special::check("InvSqrt", l.type,
                   {{{0.0}, {inf}, kelStatusSingularity},
                    {{-0.0}, {-inf}, kelStatusSingularity},
                    {{inf}, {0.0}},
                    {{-l.tiny}, {default_nan}, kelStatusDomain},
                    {{-inf}, {default_nan}, kelStatusDomain}});
    special::check("Pow3o2", l.type,
                   {{{0.0}, {0.0}},
                    {{-0.0}, {0.0}},
                    {{inf}, {inf}},
                    {{l.largest}, {inf}, kelStatusOverflow},
                    {{l.tiny}, {0.0}, kelStatusUnderflow},
                    {{l.normal}, {0.0}, kelStatusUnderflow},
                    {{-l.tiny}, {default_nan}, kelStatusDomain},
                    {{-inf}, {default_nan}, kelStatusDomain}});
  });
  // Exact at full precision; the ends of the range of x^(3/2); ties.
  for (const char* function : {"kelsInvSqrt_32f_A24", "kelsInvSqrt_64f_A53"})
    special::check(function, {{{0.25}, {2.0}}, {{0x1p-100}, {0x1p50}}, {{0x1p-130}, {0x1p65}}});
  special::check("kelsInvSqrt_64f_A53", {{{0x1p-1074}, {0x1p537}}, {{0x1p1022}, {0x1p-511}}});
  special::check("kelsPow3o2_32f_A24", {{{2.25}, {3.375}},
                                        {{0x1p-84}, {0x1p-126}},
                                        {{0x1p-86}, {0x1p-129}, kelStatusUnderflow},
                                        {{0x1p-100}, {0.0}, kelStatusUnderflow},
                                        {{257.0 * 257}, {257.0 * 257 * 257 - 1}}, // ties
                                        {{259.0 * 259}, {259.0 * 259 * 259 + 1}},
                                        {{0x1.428a2ep85}, {0x1.fffffcp127}},
                                        {{0x1.428a3p85}, {inf}, kelStatusOverflow}});
  special::check("kelsPow3o2_64f_A53", {{{2.25}, {3.375}},
                                        {{0x1p-680}, {0x1p-1020}},
                                        {{0x1p-682}, {0x1p-1023}, kelStatusUnderflow},
                                        {{0x1.0000000000004p-682}, {0x0.8000000000003p-1022}, kelStatusUnderflow},
                                        {{0x1p-718}, {0.0}, kelStatusUnderflow},
                                        {{0x1p-716}, {0x1p-1074}, kelStatusUnderflow},
                                        {{0x1p682}, {0x1p1023}},
                                        {{0x1p683}, {inf}, kelStatusOverflow}});
}

TEST(Root, CubeRoots) {
  for_both([](const Limits& l) {
    special::check("Cbrt", l.type, {{{0.0}, {0.0}}, {{-0.0}, {-0.0}}, {{inf}, {inf}}, {{-inf}, {-inf}}});
    special::check("InvCbrt", l.type,
                   {{{0.0}, {inf}, kelStatusSingularity},
                    {{-0.0}, {-inf}, kelStatusSingularity},
                    {{inf}, {0.0}},
                    {{-inf}, {-0.0}}});
    special::check("Pow2o3", l.type, {{{0.0}, {0.0}}, {{-0.0}, {0.0}}, {{inf}, {inf}}, {{-inf}, {inf}}});
  });
  std::vector<Row> roots, inverses, squares;
  for (double root : {3.0, -5.0, 123.0, 255.0, 0x1p-49, 0x1.8p-47, -0x1.c2p40})
    roots.push_back({{root * root * root}, {root}}), squares.push_back({{root * root * root}, {root * root}});
  for (double root : {0.5, -2.0, 0x1p42, -0x1p-48}) inverses.push_back({{root * root * root}, {1 / root}});
  for (const char* type : {"32f_A24", "64f_A53"}) {
    special::check(std::string("kelsCbrt_") + type, roots);
    special::check(std::string("kelsInvCbrt_") + type, inverses);
    special::check(std::string("kelsPow2o3_") + type, squares);
  }
  special::check("kelsCbrt_64f_A53", {{{0x1p-1074}, {0x1p-358}}, {{208063.0 * 208063 * 208063}, {208063.0}}});
  special::check("kelsInvCbrt_64f_A53", {{{-0x1p-1074}, {-0x1p358}}, {{0x1p1023}, {0x1p-341}}});
  special::check("kelsPow2o3_64f_A53", {{{-0x1p-1074}, {0x1p-716}}, {{0x1p1023}, {0x1p682}}});
}

TEST(Root, Hypotenuses) {
  for_both([](const Limits& l) {
    special::check("Hypot", l.type,
                   {{{-0.0, 0.0}, {0.0}},
                    {{inf, any_nan}, {inf}},
                    {{any_nan, -inf}, {inf}},
                    {{-inf, l.tiny}, {inf}},
                    {{-3.0, 4.0}, {5.0}},
                    {{l.tiny, -1.0}, {1.0}},
                    {{l.largest, 1.0}, {l.largest}},
                    {{-l.largest, l.largest}, {inf}, kelStatusOverflow},
                    {{0.0, -l.normal}, {l.normal}},
                    {{3 * l.tiny, -4 * l.tiny}, {5 * l.tiny}, kelStatusUnderflow},
                    {{l.tiny, l.tiny}, {l.tiny}, kelStatusUnderflow},
                    {{-l.tiny, 0.0}, {l.tiny}, kelStatusUnderflow},
                    {{3 / l.normal / 2, 2 / l.normal}, {2.5 / l.normal}}});
  });
  // A right triangle whose hypotenuse lies midway between two floats.
  special::check("kelsHypot_32f_A24", {{{16776945.0, 753848.0}, {16793873.0 - 1}}});
  special::check("kelsHypot_64f_A53", {{{119.0 * 0x1p500, 120.0 * 0x1p500}, {169.0 * 0x1p500}},
                                       {{119.0 * 0x1p-700, 120.0 * 0x1p-700}, {169.0 * 0x1p-700}}});
}

} // namespace
