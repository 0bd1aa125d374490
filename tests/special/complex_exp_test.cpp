// Complex Exp, Sinh, Cosh, Tanh and, by rotation, Sin, Cos, Tan: the rows of C's Annex G; symmetries and rotations bit
// for bit; results at the ends of the range.
#include "special.hpp"

#include <bit>
#include <cmath>
#include <random>

namespace {

using special::default_nan, special::inf;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

special::Value source(double x) { return std::isnan(x) ? special::any_nan : special::Value(x); }
special::Value result(double x) { return std::isnan(x) ? default_nan : special::Value(x); }

struct AnnexRow {
  double x, y, re, im;
  kelStatus status = kelStatusOk;
};

void check(const char* family, const std::vector<AnnexRow>& annex) {
  for (const harness::Type type : {harness::Type::c64, harness::Type::c32}) {
    std::vector<special::Row> rows;
    for (const AnnexRow& r : annex)
      rows.push_back({{source(r.x), source(r.y)}, {result(r.re), result(r.im)}, r.status});
    special::check(family, type, rows);
  }
}

enum class Parity { none, odd, even };

/// Rows for z and, by symmetry, for its conjugate and its opposite. A NaN has no sign here.
std::vector<AnnexRow> with_symmetries(Parity parity, std::vector<AnnexRow> rows) {
  for (std::size_t i = 0, n = rows.size(); i < n; ++i) {
    const AnnexRow r = rows[i];
    if (!std::isnan(r.y)) rows.push_back({r.x, -r.y, r.re, -r.im, r.status});
    if (parity == Parity::none || std::isnan(r.x)) continue;
    const double sign = parity == Parity::odd ? -1 : 1;
    rows.push_back({-r.x, r.y, sign * r.re, -sign * r.im, r.status});
    if (!std::isnan(r.y)) rows.push_back({-r.x, -r.y, sign * r.re, sign * r.im, r.status});
  }
  return rows;
}

// The angle 2 has a negative cosine and a positive sine.
TEST(ComplexExp, AnnexG) {
  check("Exp", with_symmetries(Parity::none, {
                                                 {0.0, 0.0, 1, 0.0},
                                                 {-0.0, 0.0, 1, 0.0},
                                                 {1, inf, nan, nan, kelStatusDomain},
                                                 {0.0, inf, nan, nan, kelStatusDomain},
                                                 {1, nan, nan, nan},
                                                 {inf, 0.0, inf, 0.0},
                                                 {-inf, 2, -0.0, 0.0},
                                                 {-inf, 0.0, 0.0, 0.0},
                                                 {inf, 2, -inf, inf},
                                                 {-inf, inf, 0.0, 0.0},
                                                 {inf, inf, inf, nan, kelStatusDomain},
                                                 {-inf, nan, 0.0, 0.0},
                                                 {inf, nan, inf, nan},
                                                 {nan, 0.0, nan, 0.0},
                                                 {nan, 1, nan, nan},
                                                 {nan, inf, nan, nan},
                                                 {nan, nan, nan, nan},
                                                 {2000, 0.0, inf, 0.0, kelStatusOverflow},
                                                 {2000, 2, -inf, inf, kelStatusOverflow},
                                                 {-2000, 2, -0.0, 0.0},
                                             }));
}

TEST(ComplexSinh, AnnexG) {
  check("Sinh", with_symmetries(Parity::odd, {
                                                 {0.0, 0.0, 0.0, 0.0},
                                                 {0.0, inf, 0.0, nan, kelStatusDomain},
                                                 {0.0, nan, 0.0, nan},
                                                 {1, inf, nan, nan, kelStatusDomain},
                                                 {1, nan, nan, nan},
                                                 {inf, 0.0, inf, 0.0},
                                                 {inf, 2, -inf, inf},
                                                 {inf, inf, inf, nan, kelStatusDomain},
                                                 {inf, nan, inf, nan},
                                                 {nan, 0.0, nan, 0.0},
                                                 {nan, 1, nan, nan},
                                                 {nan, inf, nan, nan},
                                                 {nan, nan, nan, nan},
                                                 {2000, 0.0, inf, 0.0, kelStatusOverflow},
                                                 {2000, 2, -inf, inf, kelStatusOverflow},
                                             }));
}

TEST(ComplexCosh, AnnexG) {
  check("Cosh", with_symmetries(Parity::even, {
                                                  {0.0, 0.0, 1, 0.0},
                                                  {0.0, inf, nan, 0.0, kelStatusDomain},
                                                  {0.0, nan, nan, 0.0},
                                                  {1, inf, nan, nan, kelStatusDomain},
                                                  {1, nan, nan, nan},
                                                  {inf, 0.0, inf, 0.0},
                                                  {inf, 2, -inf, inf},
                                                  {inf, inf, inf, nan, kelStatusDomain},
                                                  {inf, nan, inf, nan},
                                                  {nan, 0.0, nan, 0.0},
                                                  {nan, 1, nan, nan},
                                                  {nan, inf, nan, nan},
                                                  {nan, nan, nan, nan},
                                                  {2000, 0.0, inf, 0.0, kelStatusOverflow},
                                                  {2000, 2, -inf, inf, kelStatusOverflow},
                                              }));
}

// An infinite angle beside a zero: as C has it since 2017.
TEST(ComplexTanh, AnnexG) {
  check("Tanh", with_symmetries(Parity::odd, {
                                                 {0.0, 0.0, 0.0, 0.0},
                                                 {0.0, inf, 0.0, nan, kelStatusDomain},
                                                 {0.0, nan, 0.0, nan},
                                                 {1, inf, nan, nan, kelStatusDomain},
                                                 {1, nan, nan, nan},
                                                 {inf, 0.0, 1, 0.0},
                                                 {inf, 1, 1, 0.0},
                                                 {inf, 2, 1, -0.0},
                                                 {inf, inf, 1, 0.0},
                                                 {inf, nan, 1, 0.0},
                                                 {nan, 0.0, nan, 0.0},
                                                 {nan, 1, nan, nan},
                                                 {nan, inf, nan, nan},
                                                 {nan, nan, nan, nan},
                                                 {2000, 0.0, 1, 0.0},
                                                 {2000, 2, 1, -0.0},
                                             }));
}

// --- identities, bit for bit ----------------------------------------------------------------------------------------

/// Numbers of every size, zeros, infinities and NaNs as bits of the part's type.
class Parts {
public:
  explicit Parts(bool is_float) : is_float_(is_float) {}
  std::uint64_t next() {
    const double special[] = {0.0, -0.0, inf, -inf, nan, 1e5, -1e9, 600, -709, 1e-30};
    double x = std::ldexp(uniform_(random_), int(random_() % 24) - 12);
    if (random_() % 8 == 0) x = special[random_() % std::size(special)];
    return is_float_ ? std::bit_cast<std::uint32_t>(float(x)) : std::bit_cast<std::uint64_t>(x);
  }

private:
  bool is_float_;
  std::mt19937_64 random_{7};
  std::uniform_real_distribution<double> uniform_{-1, 1};
};

struct Bits {
  std::uint64_t re, im;
  friend bool operator==(const Bits&, const Bits&) = default;
};

/// A function, and what its symmetries do to numbers. The NaNs of results are all the same, whatever their sign would
/// be.
struct Asked {
  const harness::Function& function;
  std::uint64_t sign = function.is_float() ? 0x80000000u : std::uint64_t(1) << 63;

  Bits operator()(Bits z) const {
    const special::Answer answer = special::ask(function, {special::bits(z.re), special::bits(z.im)});
    return {answer.parts[0], answer.parts[1]};
  }
  Bits times_i(Bits z) const { return {z.im ^ sign, z.re}; }
  Bits conjugate(Bits z) const { return {z.re, z.im ^ sign}; }
  Bits opposite(Bits z) const { return {z.re ^ sign, z.im ^ sign}; }
  Bits result(Bits z) const {
    const auto no_sign = [&](std::uint64_t x) {
      const std::uint64_t infinity = function.is_float() ? 0x7F800000u : 0x7FF0000000000000u;
      return (x & ~sign) > infinity ? x | sign : x;
    };
    return {no_sign(z.re), no_sign(z.im)};
  }
};

std::string text(const harness::Function& m, Bits z) {
  return std::string(m.name) + "(" + special::bits(z.re).text(m.is_float()) + ", " +
         special::bits(z.im).text(m.is_float()) + ")";
}

TEST(ComplexExp, Symmetries) {
  const std::pair<std::string_view, Parity> families[] = {
      {"Exp", Parity::none}, {"Sinh", Parity::odd}, {"Cosh", Parity::even}, {"Tanh", Parity::odd}};
  for (const harness::Function& m : harness::all_functions())
    for (const auto& [family, parity] : families) {
      if (m.family != family || !m.complex_source()) continue;
      const Asked f{m};
      Parts parts(m.is_float());
      for (int i = 0; i < 2000; ++i) {
        const Bits z{parts.next(), parts.next()}, y = f(z);
        EXPECT_EQ(f(f.conjugate(z)), f.result(f.conjugate(y))) << text(m, z);
        if (parity != Parity::none) {
          EXPECT_EQ(f(f.opposite(z)), parity == Parity::odd ? f.result(f.opposite(y)) : y) << text(m, z);
        }
      }
    }
}

// sin z = -i sinh(iz), cos z = cosh(iz), tan z = -i tanh(iz)
TEST(ComplexExp, Rotations) {
  const std::pair<std::string, std::string> families[] = {{"Sin", "Sinh"}, {"Cos", "Cosh"}, {"Tan", "Tanh"}};
  for (const harness::Function& m : harness::all_functions())
    for (const auto& [circular, hyperbolic] : families) {
      if (m.family != circular || !m.complex_source()) continue;
      const std::string name = "kels" + hyperbolic + std::string(m.name.substr(m.name.find('_')));
      const harness::Function* const base = harness::find_function(name);
      ASSERT_NE(base, nullptr);
      const Asked f{m}, g{*base};
      Parts parts(m.is_float());
      for (int i = 0; i < 2000; ++i) {
        const Bits z{parts.next(), parts.next()}, y = g(g.times_i(z));
        EXPECT_EQ(f(z), circular == "Cos" ? y : g.result({y.im, y.re ^ g.sign})) << text(m, z);
      }
    }
}

// e^x or cosh x overflows, its products with cos y and sin y do not: no code, no flag.
TEST(ComplexExp, OverflowOfAFactorIsNone) {
  special::check("kelsExp_64fc_A53",
                 {{{710, 0x1.921fb54442d18p-1}, {0x1.c1e7dff8097b1p+1023, 0x1.c1e7dff8097b0p+1023}}});
  special::check("kelsExp_32fc_A24", {{{89, 0x1.921fb6p-1}, {0x1.ddaa840000000p+127, 0x1.ddaa860000000p+127}}});
  special::check("kelsSinh_64fc_A53",
                 {{{710.5, 0x1.921fb54442d18p-1}, {0x1.72e27517a19ebp+1023, 0x1.72e27517a19eap+1023}}});
}

} // namespace
