// Powers: every special case of C's Annex F, codes at the borders of the range, exact results; and Powx, which is Pow
// with one exponent.
#include "special.hpp"

#include <cmath>
#include <cstring>
#include <random>
#include <string>

namespace {

using harness::Type;
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

// Special bases and exponents included, where an element's neighbours share the exponent.
TEST(Pow, OneExponentGivesTheSameBits) {
  std::mt19937_64 random(3);
  std::uniform_real_distribution<double> base(-20, 20);
  for (const auto& m : harness::all_members()) {
    if (m.family != "Powx" || (m.type != Type::f32 && m.type != Type::f64)) continue;
    const auto pow = *harness::find_member("kelsPow" + std::string(m.name.substr(8)));
    for (double y : {0.0, 1.0, -1.0, 2.0, 3.0, -7.0, 0.5, 2.7, 300.0, -300.0, -0x1p-130, 0x1.000002p24, 1e30, inf, -inf,
                     std::numeric_limits<double>::quiet_NaN()}) {
      constexpr int n = 1000;
      const auto compare = [&]<class T>(T) {
        std::vector<T> x(n), exponents(n, T(y)), one(n), all(n);
        for (T& v : x) v = T(base(random));
        for (int i = 0; T v : {T(0), T(-0.0), T(1), T(-1), T(inf), T(-inf), std::numeric_limits<T>::quiet_NaN(),
                               std::numeric_limits<T>::denorm_min(), std::numeric_limits<T>::max()})
          x[i++ * 37] = v;
        const T exponent = T(y);
        const kelStatus a =
            subject::library().call(m, {.src1 = x.data(), .scalar = &exponent, .dst1 = one.data(), .len = n});
        const kelStatus b =
            subject::library().call(pow, {.src1 = x.data(), .src2 = exponents.data(), .dst1 = all.data(), .len = n});
        EXPECT_EQ(a, b) << m.name << " " << y;
        EXPECT_EQ(std::memcmp(one.data(), all.data(), n * sizeof(T)), 0) << m.name << " " << y;
      };
      if (m.is_float())
        compare(0.0f);
      else
        compare(0.0);
    }
  }
}

} // namespace
