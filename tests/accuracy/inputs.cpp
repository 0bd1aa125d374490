#include "inputs.hpp"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>

namespace accuracy {

/// Steps over an interval, each of which gives one input: even ones from `from` to `to`; or, in binades of the distance
/// from `from`, from `to` down to the smallest distance there is.
struct Walk {
  double from, to;
  int steps; // in all, or in a binade
  bool binades;
};

struct Profile {
  std::string_view family;
  Range domain;               // of finite arguments that have a finite result or a NaN-free pole
  std::vector<Range> ranges;  // to be sampled evenly
  std::vector<double> points; // to be sampled closely: thresholds, poles, borders of overflow and underflow
  double period = 0;          // the same for its multiples, at every magnitude
  double power = 0;           // arguments next to exact powers: m^power, m with half the digits or a third
};

namespace {

constexpr double inf = HUGE_VAL;
constexpr double pi = std::numbers::pi, ln2 = std::numbers::ln2;

const Profile profiles[] = {
    {"any", {-inf, inf}, {{-2, 2}, {-100, 100}}, {0, 1, -1, 0x1p63, 0x1p511, 0x1.fffffep127, 0x1.fffffffffffffp1023}},
    {"Ceil", {-inf, inf}, {{-2, 2}, {-100, 100}, {-0x1p24, 0x1p24}, {-0x1p53, 0x1p53}}, {0, 1, -1}, 0.5},
    {"Inv", {-inf, inf}, {{-2, 2}}, {0, 1, 0x1p-126, 0x1p-128, 0x1p126, 0x1p-1022, 0x1p-1024, 0x1p1022}},
    {"Sqrt", {0, inf}, {{0, 4}, {0, 1e6}}, {0, 1, 2, 0x1p-126, 0x1p-1022}, 0, 2},
    {"InvSqrt", {0, inf}, {{0, 4}, {0, 1e6}}, {0, 1, 2, 0x1p-126, 0x1p-1022}, 0, 2},
    {"Cbrt", {-inf, inf}, {{-8, 8}, {-1e6, 1e6}}, {0, 1, 2, 4, 0x1p-126, 0x1p-1022}, 0, 3},
    {"InvCbrt", {-inf, inf}, {{-8, 8}, {-1e6, 1e6}}, {0, 1, 2, 4, 0x1p-126, 0x1p-1022}, 0, 3},
    {"Pow2o3", {-inf, inf}, {{-8, 8}, {-1e6, 1e6}}, {0, 1, 2, 4, 0x1p-126, 0x1p-1022}, 0, 3},
    {"Pow3o2",
     {0, inf},
     {{0, 8}, {0, 1e6}},
     {0, 1, 2, 0x1.965feap85, 0x1p-84, 0x1.4cp-99, 0x1.965fea53d6e3cp682, 0x1.965fea53d6e3dp-682, 0x1p-716},
     0,
     2},
    {"Exp",
     {-inf, inf},
     {{-1, 1}, {-20, 20}, {-104, 89}, {-746, 710}},
     {0, 88.72283905206835, -87.33654475055310, -87.3365478515625, -103.27892990343185, -103.97207708399179,
      709.782712893384, -708.3964185322641, -707.7, -745.1332191019411, -744.4400719213812},
     ln2 / 128},
    {"Expm1",
     {-inf, inf},
     {{-1, 1}, {-20, 20}, {-40, 89}, {-40, 710}},
     {0, 88.72283905206835, 709.782712893384, -17.33, -37.43, ln2, -ln2, 0.5, -0.5},
     ln2 / 128},
    {"Ln",
     {0, inf},
     {{0.5, 2}, {0.9, 1.1}, {0, 1000}},
     {1, 0.5, 2, std::numbers::sqrt2, 0.75, 1.5, 0x1p-126, 0x1p-1022}},
    {"Log10", {0, inf}, {{0.5, 2}, {0.9, 1.1}, {0, 1000}}, {1,    0.5,  2,        std::numbers::sqrt2,
                                                            10,   100,  1e3,      1e4,
                                                            1e5,  1e6,  1e7,      1e8,
                                                            1e9,  1e10, 1e12,     1e15,
                                                            1e20, 1e22, 1e23,     1e-1,
                                                            1e-2, 1e-5, 0x1p-126, 0x1p-1022}},
    {"Log1p", {-1, inf}, {{-1, 1}, {-0.1, 0.1}, {0, 100}}, {0, -1, 1, -0.5, 0x1p-25, 0x1p-54, std::numbers::sqrt2 - 1}},
    {"Pow", {0, inf}, {{0, 2}, {0.9, 1.1}, {0, 100}}, {1, 2, 10, 0.5, std::numbers::sqrt2}},
    {"Exponent", {-inf, inf}, {{-2, 2}, {-40, 40}, {-1100, 1100}}, {0, 1, -1, 2, 3, 1024, -1074, 0x1p53, 0x1p24}, 0.5},
    {"Sin",
     {-inf, inf},
     {{-1, 1}, {-10, 10}, {-1e4, 1e4}, {-1e6, 1e6}, {90000, 140000}},
     {0, 90112, 90112.0625, 0x1p17, 0x1p23, 0x1p30, 0x1p-252, 0x1p-13, 0x1p-27, 71476.0625, 8192, 10000},
     pi / 64},
    {"Atan",
     {-inf, inf},
     {{-1, 1}, {-10, 10}},
     {0, 1, 0.4375, 0.6875, 1.1875, 2.4375, 0.41421356237309503, 2.414213562373095, 0x1p-27, 0x1p26, 0x1p54}},
    {"Asin", {-1, 1}, {{-1, 1}, {0.4, 0.6}}, {0, 1, -1, 0.5, -0.5, 0.7071067811865476, 0x1p-27, 0x1p-13}},
    {"Sinh",
     {-inf, inf},
     {{-1, 1}, {-25, 25}, {-90, 90}, {-711, 711}},
     {0, 1, 22, 9.01, 88.72283905206835, 89.41598629223294, 709.782712893384, 710.4758600739439, 0.3465735902799726},
     ln2 / 128},
    {"Tanh",
     {-inf, inf},
     {{-1, 1}, {-20, 20}, {-9.5, 9.5}},
     {0, 1, 0.55, 0.625, 9.01, 19.06, 22, 0x1p-13, 0x1p-28},
     ln2 / 128},
    {"Asinh", {-inf, inf}, {{-1, 1}, {-100, 100}}, {0, 1, 2, 0.5, 0x1p-13, 0x1p-28, 0x1p28, 0x1p64, 0x1p512}},
    {"Acosh", {1, inf}, {{1, 2}, {1, 1.1}, {1, 100}}, {1, 1.5, 2, 0x1p28, 0x1p64, 0x1p512}},
    {"Atanh", {-1, 1}, {{-1, 1}}, {0, 1, -1, 0.5, -0.5, 0x1p-13, 0x1p-28, 0x1p-53}},
    {"Erf", {-inf, inf}, {{-6, 6}, {-1, 1}, {-4, 4}}, {0, 0.5, 1, 2, 3.83, 3.919, 5.9215871957945065, 0x1p-28}},
    {"Erfc",
     {-inf, inf},
     {{-6, 6}, {-1, 1}, {0, 10.1}, {0, 27.3}},
     {0, 0.5, 1, 2, -3.83, -5.86, 9.19454, 10.05, 26.543258430632299, 27.226, 27.2}},
    {"CdfNorm",
     {-inf, inf},
     {{-6, 9}, {-1, 1}, {-14.2, 6}, {-38.6, 0}},
     {0, 0.5, 1, -1, 5.42, 8.29, -12.949953, -14.170186, -37.5193793471445, -38.4854083}},
    {"ErfInv", {-1, 1}, {{-1, 1}, {0.9, 1}, {-0.1, 0.1}}, {0, 1, -1, 0.5, 0.0625, 0.97, 0x1p-28}},
    {"ErfcInv", {0, 2}, {{0, 2}, {0, 0.1}, {0.9, 1.1}}, {0, 1, 2, 0.5, 1.5, 0x1p-24, 0x1p-53, 0.0625}},
    {"CdfNormInv", {0, 1}, {{0, 1}, {0, 0.1}, {0.45, 0.55}}, {0, 0.5, 1, 0.25, 0.75, 0x1p-24, 0x1p-53, 0x1p-5}},
};

// Two steps or more for every row of the long tables.
constexpr struct {
  std::string_view profile;
  Walk walk;
} table_rows[] = {
    {"Atan", {0, 1, 4096, false}},      {"Atan", {1, 33, 4096, false}},       {"Erf", {0, 6.5, 1664, false}},
    {"Erfc", {0, 27.25, 6976, false}},  {"CdfNorm", {0, -38.5, 9856, false}}, {"ErfInv", {1, 0, 32, true}},
    {"ErfInv", {-1, 0, 32, true}},      {"ErfcInv", {0, 1, 32, true}},        {"ErfcInv", {2, 1, 32, true}},
    {"CdfNormInv", {0, 0.5, 32, true}}, {"CdfNormInv", {1, 0.5, 32, true}},
};

// Which profile describes the parts of a family's sources. Families not listed have a profile of their own name, or
// take any number.
struct Parts {
  std::string_view family;
  bool complex;
  std::string_view re, im, second;
};
constexpr Parts parts_of[] = {
    {"Floor", false, "Ceil", "", ""},        {"Trunc", false, "Ceil", "", ""},
    {"Round", false, "Ceil", "", ""},        {"Rint", false, "Ceil", "", ""},
    {"NearbyInt", false, "Ceil", "", ""},    {"Modf", false, "Ceil", "", ""},
    {"Pow", false, "Pow", "", "Exponent"},   {"Powx", false, "Pow", "", "Exponent"},
    {"Cos", false, "Sin", "", ""},           {"SinCos", false, "Sin", "", ""},
    {"Atan2", false, "Atan", "", "any"},     {"CIS", true, "Sin", "", ""},
    {"Tan", false, "Sin", "", ""},           {"Acos", false, "Asin", "", ""},
    {"Cosh", false, "Sinh", "", ""},         {"Exp", true, "Exp", "Sin", ""},
    {"Sin", true, "Sin", "Sinh", ""},        {"Cos", true, "Sin", "Sinh", ""},
    {"Tan", true, "Sin", "Tanh", ""},        {"Sinh", true, "Sinh", "Sin", ""},
    {"Cosh", true, "Sinh", "Sin", ""},       {"Tanh", true, "Tanh", "Sin", ""},
    {"Pow", true, "any", "any", "Exponent"}, {"Powx", true, "any", "any", "Exponent"},
};

const Profile& profile_named(std::string_view family) {
  for (const Profile& p : profiles)
    if (p.family == family) return p;
  return profiles[0];
}

bool inside(const Range& range, double x) { return x >= range.lo && x <= range.hi; }

// The floats or doubles of one exponent that come closest to a multiple of pi/2: denominators of the continued fraction
// of 2^e 2/pi mod 1 (W. Kahan, Minimizing q*m-n, 1983).
void append_hardest(int exponent, int digits, std::vector<double>& hard) {
  mpfr_t alpha, whole;
  mpfr_inits2(1400, alpha, whole, nullptr);
  mpfr_const_pi(alpha, MPFR_RNDN);
  mpfr_ui_div(alpha, 2, alpha, MPFR_RNDN);
  mpfr_mul_2si(alpha, alpha, exponent, MPFR_RNDN);
  mpfr_frac(alpha, alpha, MPFR_RNDN);
  mpfr_prec_round(alpha, 256, MPFR_RNDN);
  const double limit = std::ldexp(1.0, digits);
  double before = 0, denominator = 1;
  for (int step = 0; step < 100 && mpfr_regular_p(alpha); ++step) {
    mpfr_ui_div(alpha, 1, alpha, MPFR_RNDN);
    mpfr_floor(whole, alpha);
    const double next = mpfr_get_d(whole, MPFR_RNDN) * denominator + before;
    if (next >= limit) break;
    before = denominator;
    denominator = next;
    mpfr_frac(alpha, alpha, MPFR_RNDN);
  }
  for (double m : {denominator, before, denominator + before})
    if (m > 0 && m < limit) hard.push_back(std::ldexp(m, exponent));
  mpfr_clears(alpha, whole, nullptr);
}

} // namespace

Inputs::Inputs(const harness::Function& function, std::optional<Range> range1, std::optional<Range> range2)
    : function_(function), range_{range1, range2} {
  const bool is_complex = function.type == harness::Type::c32 || function.type == harness::Type::c64;
  const Profile& own = is_complex ? profiles[0] : profile_named(function.family);
  std::fill(profile_, profile_ + 4, &own);
  for (const Parts& row : parts_of) {
    if (row.family != function.family || row.complex != is_complex) continue;
    profile_[0] = &profile_named(row.re);
    profile_[1] = &profile_named(row.im);
    profile_[2] = profile_[3] = &profile_named(row.second);
  }
  if (profile_[0]->family == "Sin" || profile_[1]->family == "Sin") {
    const auto [digits, lowest, highest] = function.format();
    for (int e = -2 * digits; e <= highest - digits; e += 1) append_hardest(e, digits, hard_);
  }
  if (!range1) append_steps();
}

const std::vector<double>& Inputs::points(int part) const { return profile_[part]->points; }

// For every function: even steps over the ranges, and every binade of the distance from the points, either side, and of
// complex numbers from 0, +-1 and +-i. Where tables are long, their rows besides.
void Inputs::append_steps() {
  const harness::Format format = function_.format();
  const auto append = [&](const Walk& walk) {
    const double step = (walk.to - walk.from) / walk.steps;
    const int binades = !walk.binades ? 1 : walk.from == 0 ? -format.exponent_min : format.digits;
    for (int k = 0; k < binades; ++k)
      for (int i = 0; i < walk.steps; ++i) {
        const double near = walk.from + (walk.binades ? std::ldexp(step * (walk.steps + i), -k - 1) : step * i);
        steps_.push_back({near, near + std::ldexp(step, walk.binades ? -k - 1 : 0)});
      }
  };
  if (function_.complex_source()) {
    for (const int sign : {1, -1}) append({0, static_cast<double>(sign), 1, true});
    return;
  }
  for (const Range& range : profile_[0]->ranges) append({range.lo, range.hi, 512, false});
  for (const double point : profile_[0]->points)
    for (const int side : {1, -1}) append({point, point + side * (point == 0 ? 1 : point), 1, true});
  for (const auto& row : table_rows)
    if (row.profile == profile_[0]->family) append(row.walk);
}

double Inputs::rounded(double x) const { return function_.is_float() ? static_cast<double>(static_cast<float>(x)) : x; }

// A number a few ulps from x, or at a distance of any smaller magnitude.
double Inputs::neighbour(Random& random, double x) const {
  if (random.one_in(2)) {
    const int steps = static_cast<int>(random.below(9)) - 4;
    if (function_.is_float()) {
      float y = static_cast<float>(x);
      for (int i = 0; i < std::abs(steps); ++i) y = std::nextafterf(y, steps < 0 ? -HUGE_VALF : HUGE_VALF);
      return y;
    }
    for (int i = 0; i < std::abs(steps); ++i) x = std::nextafter(x, steps < 0 ? -inf : inf);
    return x;
  }
  const auto [digits, lowest, highest] = function_.format();
  const int depth = x == 0 && random.one_in(2) ? -lowest : digits + 2;
  const double distance = std::ldexp(random.uniform(-1, 1), -static_cast<int>(random.below(depth)));
  return rounded(x == 0 ? distance : x + x * distance);
}

double Inputs::part(Random& random, const Profile& profile, const std::optional<Range>& range) const {
  Range domain = range ? *range : profile.domain;
  if (!range && random.one_in(64)) domain = {-inf, inf}; // domain errors
  const auto [digits, lowest, highest] = function_.format();
  for (int attempt = 0; attempt < 16; ++attempt) {
    double x = 0;
    const std::uint64_t kind = random.below(16);
    if (range && kind < 8) {
      x = random.uniform(domain.lo, domain.hi);
    } else if (kind < 5) { // every exponent
      x = std::ldexp(random.uniform(0.5, 1), lowest + 1 + static_cast<int>(random.below(highest - lowest)));
      if (random.one_in(2)) x = -x;
    } else if (kind < 10) {
      const Range& r = profile.ranges[random.below(profile.ranges.size())];
      x = random.uniform(r.lo, r.hi);
      if (random.one_in(8)) x = std::ldexp(std::rint(std::ldexp(x, 4)), -4); // few digits
    } else if (kind < 12) {
      x = neighbour(random, profile.points[random.below(profile.points.size())]);
    } else if (kind == 12) { // powers of two
      x = neighbour(
          random, std::ldexp(random.one_in(2) ? 1.0 : -1.0, lowest + static_cast<int>(random.below(highest - lowest))));
    } else if (kind == 13 && !hard_.empty() && profile.family == "Sin" && random.one_in(2)) {
      x = hard_[random.below(hard_.size())];
      if (random.one_in(2)) x = -x;
    } else if (kind <= 14 && profile.period != 0) {
      const int magnitude =
          random.one_in(4) ? static_cast<int>(random.below(digits)) : static_cast<int>(random.below(18));
      const double k = std::rint(std::ldexp(random.uniform(-1, 1), magnitude));
      x = neighbour(random, rounded(k * profile.period));
    } else if (kind <= 14 && profile.power != 0) {
      const int m_digits = digits / static_cast<int>(profile.power);
      const double m = std::floor(std::ldexp(random.uniform(0.5, 1), 1 + static_cast<int>(random.below(m_digits))));
      const int scale = static_cast<int>(random.below(81) - 40) * static_cast<int>(profile.power);
      x = neighbour(random, rounded(std::ldexp(std::pow(m, profile.power), scale)));
    } else { // subnormal or huge
      const int depth = static_cast<int>(random.below(digits));
      x = std::ldexp(random.uniform(-1, 1), random.one_in(2) ? lowest + 1 + depth : highest - depth / 4);
    }
    x = rounded(x);
    if (inside(domain, x) && std::isfinite(x)) return x;
    if (inside(domain, -x) && std::isfinite(x)) return -x;
  }
  // A range too narrow to be met by chance: between its ends, which may be a few numbers apart.
  const double lo = std::isfinite(domain.lo) ? domain.lo : 0, hi = std::isfinite(domain.hi) ? domain.hi : lo + 1;
  return std::clamp(rounded(random.uniform(lo, hi)), lo, hi);
}

// Ties the second real source to the first where independent sources would rarely meet.
void Inputs::real_pair(Random& random, double parts[4]) const {
  const double x = parts[0];
  const int smallest_normal = function_.format().exponent_normal() - 1; // 2 to this power
  const bool power = function_.family == "Pow" || function_.family == "Powx";
  if (power) {
    if (random.one_in(2)) { // a result anywhere in the range, or next to one of its ends or to 1
      const double lowest = function_.is_float() ? -150 : -1076, highest = function_.is_float() ? 129 : 1025;
      double target = random.uniform(lowest, highest);
      if (random.one_in(4))
        target = neighbour(random, random.one_in(2) ? highest - 1 : random.one_in(2) ? lowest + 1 : smallest_normal);
      if (random.one_in(6)) target = std::ldexp(random.uniform(-1, 1), -static_cast<int>(random.below(60)));
      parts[2] = rounded(target / std::log2(x));
    } else if (random.one_in(4)) { // negative base, integral exponent; now and then an exact result
      parts[0] =
          random.one_in(2) ? -x : rounded(std::rint(std::ldexp(random.unit(), static_cast<int>(random.below(20)))));
      parts[2] = std::rint(random.uniform(-20, 20));
    } else if (random.one_in(16)) { // odd and even exponents of any size, up to where all are even
      parts[0] = -neighbour(random, 1);
      parts[2] = std::rint(std::ldexp(random.uniform(-1, 1), static_cast<int>(random.below(56))));
    }
  } else if (random.one_in(16)) { // a quotient next to an end of the normal range
    const bool low = random.one_in(2);
    const int exponent = static_cast<int>(random.below(40));
    parts[2] = std::ldexp(random.one_in(2) ? 1 : -1, low ? exponent : -exponent);
    parts[0] = parts[2] * neighbour(random, low ? std::ldexp(1, smallest_normal)
                                                : (function_.is_float() ? 0x1.fffffep127 : 0x1.fffffffffffffp1023));
  } else if (random.one_in(2)) { // comparable magnitudes
    parts[2] =
        rounded(x * std::ldexp(random.uniform(-2, 2), random.one_in(2) ? 0 : static_cast<int>(random.below(121)) - 60));
  }
  if (!std::isfinite(parts[2])) parts[2] = 1;
}

// A whole or half exponent, the base often next to an axis; or one that brings the power into the range of the type,
// with a phase of moderate size, or next to a multiple of pi/2; or any. Mostly w log z, whose imaginary part is an
// angle, stays below 2^39.
void Inputs::complex_power(Random& random, double parts[4]) const {
  if (random.one_in(8)) {
    if (random.one_in(2)) parts[random.below(2)] *= std::ldexp(1, -static_cast<int>(random.below(700)));
    parts[2] = (1 + static_cast<double>(random.below(8))) / (random.one_in(2) ? 2 : -2);
    parts[3] = 0;
    return;
  }
  const std::complex<double> log = std::log(std::complex<double>(parts[0], parts[1]));
  if (random.one_in(4)) parts[3] = 0;
  if (!random.one_in(4)) {
    const double lowest = function_.is_float() ? -87 : -708, highest = function_.is_float() ? 88 : 709;
    const double size = random.one_in(2) ? 1 : std::ldexp(random.unit(), -static_cast<int>(random.below(20)));
    const std::complex<double> target(random.uniform(lowest, highest) * size, random.uniform(-100, 100) * size);
    const std::complex<double> w = target / log;
    parts[2] = w.real();
    if (parts[3] != 0) parts[3] = w.imag();
    if (random.one_in(8)) parts[2] = (std::rint(random.uniform(-9, 9)) * pi / 2 - parts[3] * log.real()) / log.imag();
  }
  if (random.one_in(32)) return;
  const bool many_bases = function_.shape == harness::Shape::ScalarPower; // the exponent serves a whole block
  const double largest = 0x1p39 / (many_bases ? 800 : std::min(800.0, std::abs(log)));
  for (double* w = parts + 2; w < parts + 4; ++w)
    if (std::fabs(*w) > largest) *w = std::ldexp(*w, std::ilogb(largest) - 1 - std::ilogb(*w));
}

// Complex arguments that two independent parts would rarely give: on an axis or next to it, on the diagonals, on the
// unit circle and next to it, close to +-1 and +-i.
void Inputs::complex_shape(Random& random, double parts[2]) const {
  const int depth = random.one_in(2) ? (function_.is_float() ? 40 : 80) : -function_.format().exponent_min;
  const double small = std::ldexp(random.uniform(-1, 1), -static_cast<int>(random.below(depth)));
  switch (random.below(12)) {
  case 0:
    parts[random.below(2)] = random.one_in(2) ? 0.0 : -0.0;
    break;
  case 1:
    parts[1] = neighbour(random, random.one_in(2) ? parts[0] : -parts[0]);
    break;
  case 2:
  case 3: {
    const double angle = random.uniform(-pi, pi);
    parts[0] = neighbour(random, std::cos(angle));
    parts[1] = neighbour(random, std::sin(angle));
    break;
  }
  case 4:
  case 5: {
    const int axis = static_cast<int>(random.below(2));
    parts[axis] = neighbour(random, random.one_in(2) ? 1 : -1);
    parts[1 - axis] = small;
    break;
  }
  case 6:
    parts[random.below(2)] *= small;
    break;
  case 7:
    parts[0] = random.uniform(-3, 3);
    parts[1] = random.uniform(-3, 3);
    break;
  default:
    break;
  }
}

// The first source of that step; a complex number as far from 0, +-1 or +-i.
void Inputs::step(Random& random, std::uint64_t number, double parts[2]) const {
  const double x = random.uniform(steps_[number].lo, steps_[number].hi);
  const int axis = static_cast<int>(random.below(2));
  parts[axis] = x;
  if (function_.complex_source())
    parts[1 - axis] = random.one_in(3) ? x * random.uniform(-2, 2) : random.one_in(2) ? 1 : -1;
  else
    std::swap(parts[0], parts[axis]);
}

void Inputs::fill(Random& random, std::uint64_t first, std::vector<reference::Arguments>& block) const {
  const bool complex_source = function_.complex_source();
  const bool second = function_.sources() == 2 || function_.shape == harness::Shape::ScalarPower;
  for (reference::Arguments& element : block) {
    double* p = element.parts;
    std::fill(p, p + 4, 0);
    const std::uint64_t number = first++;
    if (number < steps_.size()) {
      step(random, number, p);
    } else {
      p[0] = part(random, *profile_[0], range_[0]);
      if (complex_source) p[1] = part(random, *profile_[1], range_[0]);
      if (complex_source && !range_[0]) complex_shape(random, p);
    }
    if (second) p[2] = part(random, *profile_[2], range_[1]);
    if (second && complex_source) {
      p[3] = part(random, *profile_[3], range_[1]);
      if (!range_[1]) {
        const bool product = function_.family == "Mul" || function_.family == "MulByConj";
        if (function_.family == "Pow" || function_.family == "Powx") {
          complex_power(random, p);
        } else {
          complex_shape(random, p + 2);
        }
        if (product && random.one_in(4)) { // the real or the imaginary part of the product nearly vanishes
          const double scale = std::ldexp(random.uniform(0.5, 1), static_cast<int>(random.below(9)) - 4);
          p[2] = neighbour(random, rounded(p[1] * scale));
          p[3] = neighbour(random, rounded((random.one_in(2) ? 1 : -1) * p[0] * scale));
        }
      }
    } else if (second && !range_[0] && !range_[1]) {
      if (function_.family == "Atan2" && number < steps_.size())
        p[0] *= p[2]; // a step is a quotient
      else
        real_pair(random, p);
    }
    for (int i = 0; i < 4; ++i) {
      p[i] = rounded(p[i]);
      if (!std::isfinite(p[i])) p[i] = 1;
    }
  }
  if (function_.shape == harness::Shape::ScalarPower)
    for (reference::Arguments& element : block) std::copy_n(block[0].parts + 2, 2, element.parts + 2);
}

} // namespace accuracy
