// Circular functions: the arithmetic that fixes the bits of sine and cosine, transcribed for one element, with tables
// and the reduction of large arguments from MPFR; and the special rows of all functions.
#include "special.hpp"

#include <bit>
#include <cmath>
#include <cstring>
#include <mpfr.h>
#include <random>

namespace {

using special::bits, special::default_nan, special::inf;

double d(std::uint64_t pattern) { return std::bit_cast<double>(pattern); }
float f(std::uint32_t pattern) { return std::bit_cast<float>(pattern); }

/// MPFR numbers wide enough for the largest double's fraction of pi/2.
struct Big {
  mpfr_t value;
  Big() { mpfr_init2(value, 1300); }
  ~Big() { mpfr_clear(value); }
  Big(const Big&) = delete;
  operator mpfr_ptr() { return value; }
  /// Rounds to some bits, and leaves the rest.
  double take(int significant_bits) {
    mpfr_t head;
    mpfr_init2(head, significant_bits);
    mpfr_set(head, value, MPFR_RNDN);
    mpfr_sub(value, value, head, MPFR_RNDN);
    const double result = mpfr_get_d(head, MPFR_RNDN);
    mpfr_clear(head);
    return result;
  }
};

struct Row {
  double cos_rest, sin_hi, sin_lo, cos_pow;
};

/// sin (j pi / 32), exact at multiples of pi/2.
void table_sine(Big& result, int j) {
  mpfr_const_pi(result, MPFR_RNDN);
  mpfr_mul_si(result, result, j, MPFR_RNDN);
  mpfr_div_ui(result, result, 32, MPFR_RNDN);
  mpfr_sin(result, result, MPFR_RNDN);
  if (j % 16 == 0) mpfr_rint(result, result, MPFR_RNDN);
}

const Row& row(int j) {
  static const std::vector<Row> rows = [] {
    constexpr double power_from_0[] = {1, 1, 1, 1, 1, 1, 1, 1, 0.5, 0.5, 0.5, 0.5, 0.5, 0.25, 0.25, 0.125, 0};
    std::vector<Row> all;
    for (int i = 0; i < 64; ++i) {
      const int half = i <= 32 ? i : 64 - i;
      Row r;
      r.cos_pow = half <= 16 ? power_from_0[half] : -power_from_0[32 - half];
      Big value;
      table_sine(value, i);
      r.sin_hi = value.take(53);
      r.sin_lo = value.take(24);
      table_sine(value, i + 16);
      mpfr_sub_d(value, value, r.cos_pow, MPFR_RNDN);
      r.cos_rest = value.take(53);
      all.push_back(r);
    }
    return all;
  }();
  return rows[j & 63];
}

/// |x| >= 2^17: x = quadrant pi/2 + y + y_lo.
long quadrant_of(double x, double& y, double& y_lo) {
  Big half_pi, turns;
  mpfr_const_pi(half_pi, MPFR_RNDN);
  mpfr_div_ui(half_pi, half_pi, 2, MPFR_RNDN);
  mpfr_set_d(turns, x, MPFR_RNDN);
  mpfr_div(turns, turns, half_pi, MPFR_RNDN);
  Big whole;
  mpfr_rint(whole, turns, MPFR_RNDN);
  mpfr_sub(turns, turns, whole, MPFR_RNDN);
  mpfr_mul(turns, turns, half_pi, MPFR_RNDN);
  y = turns.take(53);
  y_lo = turns.take(53);
  mpfr_fmod_ui(whole, whole, 4, MPFR_RNDN);
  return mpfr_get_si(whole, MPFR_RNDN);
}

double sine_53(double x, int shift) {
  long quadrant = 0;
  double y = x, y_lo = 0;
  if (std::fabs(x) >= 0x1p17) quadrant = quadrant_of(x, y, y_lo);
  const double p1 = d(0x3FB921FB54400000), p2 = d(0x3D90B4611A600000), p3 = d(0x3B63198A2E037073);
  const double k = (y * d(0x40245F306DC9C883) + 6755399441055744.0) - 6755399441055744.0;
  const double t = y - k * p1, r_hi = t - k * p2;
  double r_lo = ((t - r_hi) - k * p2) - k * p3;
  if (quadrant != 0 || y_lo != 0) r_lo = r_lo + y_lo;
  const Row e = row(int(16 * quadrant + long(k)) + shift);
  const double cA = e.cos_rest + e.cos_pow, z = r_hi * r_hi;
  const double ps = z * (d(0xBFC5555555555555) +
                         z * (d(0x3F81111111111111) + z * (d(0xBF2A01A01A01A01A) + z * d(0x3EC71DE3A556C734))));
  const double pc = z * (-0.5 + z * (d(0x3FA5555555555555) + z * (d(0xBF56C16C16C16C17) + z * d(0x3EFA01A01A01A01A))));
  const double corr = e.sin_lo + r_lo * (cA - e.sin_hi * r_hi);
  const double u = e.sin_hi + e.cos_pow * r_hi, e1 = (e.sin_hi - u) + e.cos_pow * r_hi;
  const double v = u + e.cos_rest * r_hi, e2 = (u - v) + e.cos_rest * r_hi;
  return v + ((((e1 + corr) + e2) + ps * r_hi * cA) + pc * e.sin_hi);
}
double sin_53(double x) { return sine_53(x, 0); }
double cos_53(double x) { return sine_53(x, 16); }

template <bool Cosine> double sine_26(double x) {
  const double k = (x * d(0x40245F306DC9C883) + 6755399441055744.0) - 6755399441055744.0;
  const double r = ((x - k * d(0x3FB921FB54442D18)) - k * d(0x3C51A62633145C06)) - k * d(0x390C1CD129024E09);
  const double s = row(int(k)).sin_hi, c = row(int(k) + 16).sin_hi, z = r * r;
  const double sin_r = r * (1 + z * (d(0xBFC5555555555555) + z * d(0x3F81111111111111)));
  const double cos_r = 1 + z * (-0.5 + z * d(0x3FA5555555555555));
  return Cosine ? c * cos_r - s * sin_r : s * cos_r + c * sin_r;
}

float half_turns(float x) { return (x * f(0x3EA2F983) + 12582912.0f) - 12582912.0f; }
float with_parity(float k, float y) { return std::fabs(std::remainder(k, 2.0f)) == 1 ? -y : y; }

float sin_24(float x) {
  const float n = half_turns(x);
  const double k = n, r = double(x) - k * d(0x400921FB54440000) - k * d(0x3D968C234C4C6629), z = r * r;
  return with_parity(
      n, float(r * (d(0x3FF000000089705F) +
                    z * (d(0xBFC55554AE8BA1BD) +
                         z * (d(0x3F8110EE64CD0933) + z * (d(0xBF29F75E2C166F94) + z * d(0x3EC5E0A329A17541)))))));
}
float sin_21(float x) {
  const float k = half_turns(x);
  const float r = x - k * 3.140625f - k * f(0x3A7DA000) - k * f(0x34222000) - k * f(0x2CB4611A), z = r * r;
  return with_parity(k, r + r * z * (f(0xBE2AAAA5) + z * (f(0x3C088773) + z * (f(0xB94FBAF1) + z * f(0x362F0519)))));
}
float sin_11(float x) {
  const float k = half_turns(x), r = x - k * 3.140625f - k * f(0x3A7DAA22), z = r * r;
  return with_parity(k, r + r * z * (f(0xBE2AAAA6) + z * (f(0x3C08876A) + z * f(0xB94FB7FF))));
}

/// Ordinary numbers up to a limit, of all magnitudes, one in `large` above it (0: none).
template <class T> std::vector<T> arguments(double limit, int large) {
  std::mt19937_64 random(1);
  std::uniform_real_distribution<double> anywhere(-limit, limit);
  std::vector<T> x(40001);
  for (std::size_t i = 0; i < x.size(); ++i) {
    x[i] = T(anywhere(random) * (i % 3 == 0 ? std::ldexp(1.0, -int(random() % 60)) : 1.0));
    if (large != 0 && i % large == 0) x[i] *= T(std::ldexp(1.0, int(random() % 1000)));
  }
  return x;
}

template <class T> std::vector<T> results(std::string_view name, const std::vector<T>& x, std::vector<T>* second) {
  std::vector<T> y(2 * x.size()), other(x.size());
  const harness::Function& function = *harness::find_function(name);
  driver::library().call(
      function, {.src1 = x.data(), .dst1 = y.data(), .dst2 = second ? other.data() : nullptr, .len = int(x.size())});
  if (second) *second = other;
  return y;
}

template <class T> void check(std::string_view name, T (*expected)(T), const std::vector<T>& x) {
  const std::vector<T> y = results<T>(name, x, nullptr);
  int wrong = 0;
  for (std::size_t i = 0; i < x.size() && wrong < 5; ++i) {
    const T e = expected(x[i]);
    if (std::memcmp(&e, &y[i], sizeof e) == 0) continue;
    ++wrong;
    ADD_FAILURE() << name << " of " << std::hexfloat << x[i] << " is " << y[i] << ", not " << e;
  }
}

TEST(Trig, SineAndCosineAsTranscribed) {
  const std::vector<double> any = arguments<double>(140000, 4);
  check<double>("kelsSin_64f_A53", sin_53, any);
  check<double>("kelsSin_64f_A50", sin_53, any);
  check<double>("kelsCos_64f_A53", cos_53, any);
  check<double>("kelsCos_64f_A50", cos_53, any);
  const std::vector<double> near = arguments<double>(90112.0625, 0);
  check<double>("kelsSin_64f_A26", sine_26<false>, near);
  check<double>("kelsCos_64f_A26", sine_26<true>, near);
  check<float>("kelsSin_32f_A24", sin_24, arguments<float>(10000, 0));
  check<float>("kelsSin_32f_A21", sin_21, arguments<float>(10000, 0));
  check<float>("kelsSin_32f_A11", sin_11, arguments<float>(4000, 0));
}

/// SinCos and CIS give the bits of Sin and Cos; sines and tangents are odd, cosines even; none is above 1.
template <class T> void check_relations(const std::string& type, const std::string& suffix) {
  const std::string end = "_" + type + "_" + suffix;
  const std::vector<T> x = arguments<T>(20000, 5);
  std::vector<T> minus_x = x, cosines;
  for (T& y : minus_x) y = -y;
  const std::vector<T> sin = results<T>("kelsSin" + end, x, nullptr), cos = results<T>("kelsCos" + end, x, nullptr),
                       tan = results<T>("kelsTan" + end, x, nullptr),
                       cis = results<T>("kelsCIS_" + type + "c_" + suffix, x, nullptr),
                       sines = results<T>("kelsSinCos" + end, x, &cosines),
                       sin_minus = results<T>("kelsSin" + end, minus_x, nullptr),
                       cos_minus = results<T>("kelsCos" + end, minus_x, nullptr),
                       tan_minus = results<T>("kelsTan" + end, minus_x, nullptr);
  int wrong = 0;
  for (std::size_t i = 0; i < x.size() && std::isfinite(x[i]) && wrong < 5; ++i)
    if (!(sines[i] == sin[i] && cosines[i] == cos[i] && cis[2 * i] == cos[i] && cis[2 * i + 1] == sin[i] &&
          sin_minus[i] == -sin[i] && cos_minus[i] == cos[i] && tan_minus[i] == -tan[i] && std::fabs(sin[i]) <= 1 &&
          std::fabs(cos[i]) <= 1)) {
      ++wrong;
      ADD_FAILURE() << end << " at " << std::hexfloat << x[i];
    }
}
TEST(Trig, OneAnotherAndSymmetry) {
  for (const char* suffix : {"A26", "A50", "A53"}) check_relations<double>("64f", suffix);
  for (const char* suffix : {"A11", "A21", "A24"}) check_relations<float>("32f", suffix);
}

TEST(Trig, SpecialRows) {
  for (const double sign : {1.0, -1.0}) {
    const double zero = sign * 0.0, infinity = sign * inf;
    special::check_real("Sin", {{{zero}, {zero}}, {{infinity}, {default_nan}, kelStatusDomain}});
    special::check_real("Tan", {{{zero}, {zero}}, {{infinity}, {default_nan}, kelStatusDomain}});
    special::check_real("Cos", {{{zero}, {1.0}}, {{infinity}, {default_nan}, kelStatusDomain}});
    special::check_real("SinCos", {{{zero}, {zero, 1.0}}, {{infinity}, {default_nan, default_nan}, kelStatusDomain}});
    for (const harness::Type type : {harness::Type::c32, harness::Type::c64})
      special::check("CIS", type, {{{zero}, {1.0, zero}}, {{infinity}, {default_nan, default_nan}, kelStatusDomain}});
  }
  for (const double tiny : {0x1p-149, -0x1p-126, 0x1p-40})
    for (const char* family : {"Sin", "Tan"}) special::check_real(family, {{{tiny}, {tiny}}});
  for (const double tiny : {0x1p-1074, -0x1.8p-1050, 0x1p-540, -0x1.23456789abcdep-252})
    for (const char* family : {"Sin", "Tan"}) special::check(family, harness::Type::f64, {{{tiny}, {tiny}}});

  // NaNs: one result whatever the payload; one in the lower word alone passes for an infinity in Sin, Cos and SinCos.
  const std::vector<special::Row> floats = {{{bits(0x7FC00000)}, {default_nan}}, {{bits(0xFF800001)}, {default_nan}}};
  std::vector<special::Row> doubles = {{{bits(0x7FF8000000000123)}, {default_nan}},
                                       {{bits(0xFFF0000100000000)}, {default_nan}}};
  for (const char* family : {"Sin", "Cos", "Tan"}) special::check(family, harness::Type::f32, floats);
  special::check("Tan", harness::Type::f64, doubles);
  special::check("Tan", harness::Type::f64, {{{bits(0x7FF0000000000001)}, {default_nan}}});
  doubles.push_back({{bits(0x7FF0000000000001)}, {default_nan}, kelStatusDomain});
  special::check("Sin", harness::Type::f64, doubles);
  special::check("Cos", harness::Type::f64, doubles);
  special::check("SinCos", harness::Type::f64,
                 {{{bits(0xFFF0000000000001)}, {default_nan, default_nan}, kelStatusDomain}});
  special::check("CIS", harness::Type::c64, {{{bits(0x7FF0000000000001)}, {default_nan, default_nan}}});
}

} // namespace
