// The error function, its complement and the normal distribution function: special values, saturation, the end of the
// tails, and round trips through the inverses.
#include "special.hpp"

#include <cmath>
#include <cstdio>
#include <random>

namespace {

using harness::Type;
using special::any_nan;
using special::inf;

TEST(Erf, SpecialValues) {
  special::check_real("Erf",
                      {{{0.0}, {0.0}}, {{-0.0}, {-0.0}}, {{inf}, {1.0}}, {{-inf}, {-1.0}}, {{any_nan}, {any_nan}}});
  special::check("Erf", Type::f64, {{{6.0}, {1.0}}, {{-0x1p1023}, {-1.0}}});
  special::check("Erf", Type::f32, {{{4.0}, {1.0}}, {{-0x1p127}, {-1.0}}});
}

// Tiny arguments: x 2 / sqrt(pi), rounded once.
TEST(Erf, TinyArguments) {
  const double unit = 0x1p-1074;
  special::check("Erf", Type::f64,
                 {{{unit}, {unit}, kelStatusOk, driver::underflow},
                  {{-3 * unit}, {-3 * unit}, kelStatusOk, driver::underflow},
                  {{5 * unit}, {6 * unit}, kelStatusOk, driver::underflow},
                  {{0x1p-1022}, {0x1.20dd750429b6dp-1022}},
                  {{-0x1p-401}, {-0x1.20dd750429b6dp-401}}});
}

// The last result in the normal range and the next, the last that is not zero and the next. Underflow from a finite
// argument alone, exact zero or not; on the other side nothing is special.
TEST(Erfc, SpecialValuesAndTheEndOfTheTail) {
  special::check_real("Erfc", {{{-inf}, {2.0}},
                               {{inf}, {0.0}},
                               {{0.0}, {1.0}},
                               {{-0.0}, {1.0}},
                               {{any_nan}, {any_nan}},
                               {{0x1p127}, {0.0}, kelStatusUnderflow},
                               {{-0x1p127}, {2.0}}});
  special::check("Erfc", Type::f64,
                 {{{0x1.a8b12fc6e4891p+4}, {0x1.0000000000332p-1022}},
                  {{0x1.a8b12fc6e4892p+4}, {0x0.fffffffffffe0p-1022}, kelStatusUnderflow},
                  {{0x1.b39dc41e48bfcp+4}, {0x1p-1074}, kelStatusUnderflow},
                  {{0x1.b39dc41e48bfdp+4}, {0.0}, kelStatusUnderflow},
                  {{-0x1.a8b12fc6e4892p+4}, {2.0}}});
  special::check("Erfc", Type::f32,
                 {{{0x1.2639bep+3}, {0x1.000106p-126}},
                  {{0x1.2639cp+3}, {0x1.ffffbcp-127}, kelStatusUnderflow},
                  {{0x1.41bbf6p+3}, {0x1p-149}, kelStatusUnderflow},
                  {{0x1.41bbf8p+3}, {0.0}, kelStatusUnderflow},
                  {{-0x1.2639cp+3}, {2.0}}});
}

TEST(CdfNorm, SpecialValuesAndTheEndOfTheTail) {
  special::check_real("CdfNorm", {{{-inf}, {0.0}},
                                  {{inf}, {1.0}},
                                  {{0.0}, {0.5}},
                                  {{-0.0}, {0.5}},
                                  {{any_nan}, {any_nan}},
                                  {{-0x1p127}, {0.0}, kelStatusUnderflow},
                                  {{0x1p127}, {1.0}}});
  special::check("CdfNorm", Type::f64,
                 {{{-0x1.2c27b05bf1a0ap+5}, {0x1.000000000043cp-1022}},
                  {{-0x1.2c27b05bf1a0bp+5}, {0x0.fffffffffff8bp-1022}, kelStatusUnderflow},
                  {{-0x1.33e21dc3f3bd7p+5}, {0x1p-1074}, kelStatusUnderflow},
                  {{-0x1.33e21dc3f3bd8p+5}, {0.0}, kelStatusUnderflow},
                  {{0x1.2c27b05bf1a0bp+5}, {1.0}}});
  special::check("CdfNorm", Type::f32,
                 {{{-0x1.9e6602p+3}, {0x1.00007ep-126}},
                  {{-0x1.9e6604p+3}, {0x1.ffff5cp-127}, kelStatusUnderflow},
                  {{-0x1.c57228p+3}, {0x1p-149}, kelStatusUnderflow},
                  {{-0x1.c5722ap+3}, {0.0}, kelStatusUnderflow},
                  {{0x1.9e6604p+3}, {1.0}}});
}

// Function of inverse gives p back but for the roundings of both: that of x counts by the condition number of f, which
// is below 1 + slope x^2 in the tail where f is small, and below 1 elsewhere.
struct Trip {
  const char *function, *inverse;
  double low, high;   // the open domain of the inverse
  double slope, tail; // tail: the sign of x where f is small, 0 for none
};

template <class T> std::vector<T> values_of(const char* name, const std::vector<T>& x) {
  std::vector<T> y(x.size());
  const harness::Function* m = harness::find_function(name);
  if (m == nullptr) throw std::runtime_error(name);
  const driver::Callable s(*m);
  EXPECT_EQ(s.call({x.data(), nullptr, nullptr, y.data(), nullptr, int(x.size())}).status, kelStatusOk) << name;
  return y;
}

template <class T> void round_trip(const Trip& trip, const char* suffix, double inverse_ulp, double function_ulp) {
  std::mt19937_64 random(7);
  std::uniform_real_distribution<double> uniform(0, 1), exponent(1, sizeof(T) == 8 ? 1000 : 120);
  std::vector<T> p;
  for (int i = 0; i < 30000; ++i) {
    const double u = uniform(random), tiny = std::ldexp(0.5 + u / 2, -int(exponent(random)));
    const double edge = std::ldexp(0.5 + u / 2, -int(exponent(random) * (sizeof(T) == 8 ? 0.05 : 0.18)));
    const double from[3] = {trip.low + (trip.high - trip.low) * u, trip.low + tiny, trip.high - edge};
    const T value = T(from[i % 3]);
    if (trip.low < value && value < trip.high && value != T((trip.low + trip.high) / 2)) p.push_back(value);
  }
  const std::vector<T> x = values_of((trip.inverse + std::string(suffix)).c_str(), p);
  const std::vector<T> back = values_of((trip.function + std::string(suffix)).c_str(), x);
  const double epsilon = std::numeric_limits<T>::epsilon();
  double worst = 0, share = 0;
  for (std::size_t i = 0; i < p.size(); ++i) {
    const double condition = 1 + (trip.tail * x[i] > 0 ? trip.slope * x[i] * x[i] : 0);
    const double error = std::fabs(double(back[i]) - p[i]) / std::fabs(p[i]) / epsilon;
    const double bound = 1.001 * (inverse_ulp * condition + function_ulp);
    ASSERT_LE(error, bound) << trip.inverse << suffix << "(" << p[i] << ")";
    worst = std::fmax(worst, error);
    share = std::fmax(share, error / bound);
  }
  std::printf("%s(%s)%s: up to %.1f ulp, %.2f of what the roundings allow\n", trip.function, trip.inverse, suffix,
              worst, share);
  EXPECT_GT(share, 0.2); // the bound is no idle one
}

TEST(RoundTrip, FunctionOfInverse) {
  for (const Trip& trip : {Trip{"kelsCdfNorm", "kelsCdfNormInv", 0, 1, 1, -1},
                           Trip{"kelsErfc", "kelsErfcInv", 0, 2, 2, 1}, Trip{"kelsErf", "kelsErfInv", -1, 1, 0, 0}}) {
    round_trip<double>(trip, "_64f_A53", 0.505, 0.52);
    round_trip<float>(trip, "_32f_A24", 0.5, 0.5);
  }
}

} // namespace
