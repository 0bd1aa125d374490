// Inverse circular and hyperbolic functions of complex numbers: the rows of C's Annex G, the sides of the cuts by the
// signs of zeros, symmetry and the rotations that tie the families together, and results at the ends of the range.
#include "special.hpp"

#include <bit>
#include <cmath>
#include <complex>
#include <numbers>
#include <random>

namespace {

using harness::Type, special::any_nan, special::default_nan, special::inf, special::Row, special::Value;
using Complex = std::complex<double>;

constexpr double pi = std::numbers::pi, nan = std::numeric_limits<double>::quiet_NaN();

/// An element of one family; signs of zeros count, a NaN stands for any as a source and for the default one as a
/// result.
struct Annex {
  Complex z, w;
  kelStatus status = kelStatusOk;
};

double rounded(Type type, double x) { return type == Type::c32 ? static_cast<double>(static_cast<float>(x)) : x; }
Value source(double x) { return std::isnan(x) ? any_nan : Value(x); }
Value result(double x) { return std::isnan(x) ? default_nan : Value(x); }

/// A part of w turned with the part of z that it goes with; a NaN as a source is always positive.
double turned_with(double w, double z) { return std::isnan(z) ? w : -w; }
Annex conjugate(const Annex& r) {
  return {std::conj(r.z), {r.w.real(), turned_with(r.w.imag(), r.z.imag())}, r.status};
}
Annex opposite(const Annex& r) {
  return {-r.z, {turned_with(r.w.real(), r.z.real()), turned_with(r.w.imag(), r.z.imag())}, r.status};
}
/// Every row, its conjugate, and for odd functions both turned by 180 degrees.
std::vector<Annex> spread(const std::vector<Annex>& rows, bool odd) {
  std::vector<Annex> all;
  for (const Annex& row : rows)
    for (const Annex& r : {row, conjugate(row)}) {
      all.push_back(r);
      if (odd) all.push_back(opposite(r));
    }
  return all;
}
void check_rows(const char* family, const std::vector<Annex>& annex) {
  for (const Type type : {Type::c32, Type::c64}) {
    std::vector<Row> rows;
    for (const auto& [z, w, status] : annex)
      rows.push_back({{source(z.real()), source(z.imag())},
                      {result(rounded(type, w.real())), result(rounded(type, w.imag()))},
                      status});
    special::check(family, type, rows);
  }
}

Complex turned(Complex z) { return {-z.imag(), z.real()}; }      // iz
Complex turned_back(Complex z) { return {z.imag(), -z.real()}; } // -iz
/// The rows of g(z) = -i f(iz) from those of f; where z turns a NaN, it is a positive one again.
std::vector<Annex> rotated(std::vector<Annex> rows) {
  for (Annex& r : rows) {
    r.z = turned_back(r.z);
    r.w = {r.w.imag(), turned_with(r.w.real(), r.z.imag())};
  }
  return rows;
}
/// The rows of acosh from those of acos with a positive imaginary part of z (below, its conjugate).
std::vector<Annex> of_acosh(std::vector<Annex> rows) {
  for (Annex& r : rows) r.w = turned(r.w);
  return rows;
}

const std::vector<Annex> asinh_rows = {{{0, 0}, {0, 0}},          {{0, 1}, {0, pi / 2}},   {{1, inf}, {inf, pi / 2}},
                                       {{0, inf}, {inf, pi / 2}}, {{1, nan}, {nan, nan}},  {{0, nan}, {nan, nan}},
                                       {{inf, 1}, {inf, 0}},      {{inf, 0}, {inf, 0}},    {{inf, inf}, {inf, pi / 4}},
                                       {{inf, nan}, {inf, nan}},  {{nan, 0}, {nan, 0}},    {{nan, 1}, {nan, nan}},
                                       {{nan, inf}, {inf, nan}},  {{nan, nan}, {nan, nan}}};
const std::vector<Annex> acos_rows = {
    {{0, 0}, {pi / 2, -0.0}},   {{-0.0, 0}, {pi / 2, -0.0}},      {{1, 0}, {0, -0.0}},
    {{-1, 0}, {pi, -0.0}},      {{0, nan}, {pi / 2, nan}},        {{-0.0, nan}, {pi / 2, nan}},
    {{1, inf}, {pi / 2, -inf}}, {{-1, inf}, {pi / 2, -inf}},      {{1, nan}, {nan, nan}},
    {{-inf, 1}, {pi, -inf}},    {{-inf, 0}, {pi, -inf}},          {{inf, 1}, {0, -inf}},
    {{inf, 0}, {0, -inf}},      {{-inf, inf}, {0.75 * pi, -inf}}, {{inf, inf}, {pi / 4, -inf}},
    {{nan, 1}, {nan, nan}},     {{nan, 0}, {nan, nan}},           {{nan, inf}, {nan, -inf}},
    {{nan, nan}, {nan, nan}},   {{inf, nan}, {nan, -inf}},        {{-inf, nan}, {nan, -inf}}};
const std::vector<Annex> atanh_rows = {
    {{0, 0}, {0, 0}},          {{0, nan}, {0, nan}},    {{1, 0}, {inf, 0}, kelStatusSingularity},
    {{1, inf}, {0, pi / 2}},   {{0, inf}, {0, pi / 2}}, {{1, nan}, {nan, nan}},
    {{inf, 1}, {0, pi / 2}},   {{inf, 0}, {0, pi / 2}}, {{inf, inf}, {0, pi / 2}},
    {{inf, nan}, {0, nan}},    {{nan, 1}, {nan, nan}},  {{nan, 0}, {nan, nan}},
    {{nan, inf}, {0, pi / 2}}, {{nan, nan}, {nan, nan}}};

TEST(ComplexInverse, AnnexG) {
  check_rows("Asinh", spread(asinh_rows, true));
  check_rows("Asin", spread(rotated(asinh_rows), true));
  check_rows("Acos", spread(acos_rows, false));
  check_rows("Acosh", spread(of_acosh(acos_rows), false));
  check_rows("Atanh", spread(atanh_rows, true));
  check_rows("Atan", spread(rotated(atanh_rows), true));
}

Complex ask(const harness::Function& m, Complex z) {
  const special::Answer a = special::ask(m, {Value(z.real()), Value(z.imag())});
  const auto number = [&](std::uint64_t bits) {
    return m.is_float() ? static_cast<double>(std::bit_cast<float>(static_cast<std::uint32_t>(bits)))
                        : std::bit_cast<double>(bits);
  };
  return {number(a.parts[0]), number(a.parts[1])};
}
template <class F> void for_functions(std::string_view family, F f) {
  for (const harness::Function& m : harness::all_functions())
    if (m.family == family && (m.type == Type::c32 || m.type == Type::c64)) f(m);
}
bool same(Complex a, Complex b) {
  const auto part = [](double x, double y) { return x == y && std::signbit(x) == std::signbit(y); };
  return part(a.real(), b.real()) && part(a.imag(), b.imag());
}

/// Points of all quadrants, of both sides of every cut, and of the axes; every part is a float.
std::vector<Complex> points() {
  std::vector<Complex> all;
  const double parts[] = {0, 0x1p-140, 0x1p-60, 0.25, 0.75, 1 - 0x1p-24, 1, 1 + 0x1p-23, 2.5, 0x1p40, 0x1p120};
  for (const double x : parts)
    for (const double y : parts) all.emplace_back(x, y);
  std::mt19937 random(11);
  std::uniform_real_distribution<float> uniform(0, 3);
  for (int i = 0; i < 100; ++i) all.emplace_back(uniform(random), uniform(random));
  return all;
}

TEST(ComplexInverse, TheSignOfAZeroTellsTheSideOfACut) {
  struct Family {
    const char* name;
    Complex (*function)(const Complex&);
    bool real_axis;
  };
  constexpr Family families[] = {{"Asin", std::asin, true},   {"Acos", std::acos, true},    {"Acosh", std::acosh, true},
                                 {"Atanh", std::atanh, true}, {"Asinh", std::asinh, false}, {"Atan", std::atan, false}};
  for (const auto& [name, function, real_axis] : families)
    for_functions(name, [&, function = function, real_axis = real_axis](const harness::Function& m) {
      for (const double along : {-2.0, -1.125, -0.5, 0.0, 0.5, 1.125, 2.0, 3e8})
        for (const double across : {0.0, -0.0}) {
          const Complex z = real_axis ? Complex(along, across) : Complex(across, along);
          const Complex got = ask(m, z), exact = function(z);
          EXPECT_LE(std::abs(got - exact), std::ldexp(std::abs(exact), -std::min(m.suffix_bits(), 51))) << m.name << z;
          EXPECT_EQ(std::signbit(got.real()), std::signbit(exact.real())) << m.name << z;
          EXPECT_EQ(std::signbit(got.imag()), std::signbit(exact.imag())) << m.name << z;
        }
    });
}

/// The function of another family with the type and suffix of this one.
const harness::Function& sibling(const harness::Function& m, std::string_view family) {
  std::string name(m.name);
  name.replace(4, m.family.size(), family);
  return *harness::find_function(name);
}

TEST(ComplexInverse, Symmetry) {
  for (const char* family : {"Asin", "Asinh", "Atan", "Atanh", "Acos", "Acosh"})
    for_functions(family, [&](const harness::Function& m) {
      for (const Complex z : points()) {
        const Complex w = ask(m, z);
        EXPECT_TRUE(same(ask(m, std::conj(z)), std::conj(w))) << m.name << z;
        if (m.family != "Acos" && m.family != "Acosh") {
          EXPECT_TRUE(same(ask(m, -z), -w)) << m.name << z;
        }
      }
    });
}

TEST(ComplexInverse, Rotations) {
  const auto check = [](const char* family, const char* other) {
    for_functions(family, [&](const harness::Function& m) {
      for (const Complex z : points())
        EXPECT_TRUE(same(ask(m, z), turned_back(ask(sibling(m, other), turned(z))))) << m.name << z;
    });
  };
  check("Asin", "Asinh");
  check("Atan", "Atanh");
  for_functions("Acosh", [](const harness::Function& m) {
    for (const Complex z : points())
      for (const Complex u : {z, -std::conj(z)})
        EXPECT_TRUE(same(ask(m, u), turned(ask(sibling(m, "Acos"), u)))) << m.name << u;
  });
}

TEST(ComplexInverse, EndsOfTheRange) {
  const double least = 0x1p-1074, huge = 0x1p1023;
  const std::vector<Annex> odd = {{{least, least}, {least, least}}, {{0x1p-1022, 0}, {0x1p-1022, 0}}};
  std::vector<Row> rows;
  for (const auto& [z, w, status] : odd) rows.push_back({{z.real(), z.imag()}, {w.real(), w.imag()}, status});
  for (const char* family : {"Asin", "Asinh", "Atan", "Atanh"}) special::check(family, Type::c64, rows);
  special::check("kelsAsin_64fc_A53", {{{huge, 0.0}, {pi / 2, 0x1.62e42fefa39efp+9}},
                                       {{least, huge}, {0.0, 0x1.62e42fefa39efp+9}},
                                       {{1.0, least}, {pi / 2, 0x1p-537}},
                                       {{0.5, 0x1p-1060}, {0x1.0c152382d7366p-1, 0x1.279a74590331cp-1060}}});
  special::check("kelsAcos_64fc_A53", {{{huge, least}, {0.0, -0x1.62e42fefa39efp+9}},
                                       {{2.0, 0x1p-1060}, {0x1.279a74590331cp-1061, -0x1.5124271980435p+0}},
                                       {{1.0, least}, {0x1p-537, -0x1p-537}}});
  special::check("kelsAtanh_64fc_A53", {{{1.0, least}, {0x1.74910d52d3052p+8, pi / 4}},
                                        {{huge, huge}, {0x1p-1024, pi / 2}},
                                        {{0.5, 0x1p-1060}, {0x1.193ea7aad030bp-1, 0x1.5555555555555p-1060}},
                                        {{2.0, 0x1p-1060}, {0x1.193ea7aad030bp-1, pi / 2}}});
}

} // namespace
