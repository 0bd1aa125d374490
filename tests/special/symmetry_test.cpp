// Symmetries of functions, what ties them to each other, and bounds of their results, bit for bit: by lists.
#include "special.hpp"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>

namespace {

using namespace driver;
using harness::Function;

/// Parts taken from those of another element: 1 to 4 by their place, negated where negative; 0: none.
using Turn = std::array<int, 4>;
constexpr Turn same{1, 2, 3, 4}, opposite{-1, -2, -3, -4}, conjugate{1, -2, 3, -4}, times_i{-2, 1}, over_i{2, -1};

/// f(x) = result(g(source(x))) for families of real or of complex sources. g: f itself, where it is not named.
struct Relation {
  bool complex;
  std::vector<std::string_view> families;
  Turn source, result;
  std::string_view other = {};
};
const Relation relations[] = {
    {false,
     {"Sin", "Tan", "Asin", "Atan", "Sinh", "Tanh", "Asinh", "Atanh", "Erf", "ErfInv", "Cbrt", "InvCbrt", "Inv",
      "Trunc", "Rint", "NearbyInt", "Modf"},
     opposite,
     opposite},
    {false, {"Floor"}, opposite, opposite, "Ceil"},
    {false, {"Cos", "Cosh", "Pow2o3", "Abs", "Sqr", "Hypot"}, opposite, same},
    {false, {"Hypot", "Mul", "Add"}, {3, 0, 1, 0}, same},
    {false, {"Div", "Mul", "Atan2"}, {-1, 0, 3, 0}, opposite},
    {false, {"SinCos"}, opposite, {-1, 2}},
    {false, {"SinCos"}, same, {2, 1}, "CIS"},
    {false, {"Sin"}, same, {1}, "SinCos"},
    {false, {"Cos"}, same, {2}, "SinCos"},
    {true,
     {"Exp", "Ln", "Log10", "Sqrt", "Sin", "Cos", "Tan", "Asin", "Acos", "Atan", "Sinh", "Cosh", "Tanh", "Asinh",
      "Acosh", "Atanh", "Conj"},
     conjugate,
     conjugate},
    {true, {"Sin", "Tan", "Asin", "Atan", "Sinh", "Tanh", "Asinh", "Atanh"}, opposite, opposite},
    {true, {"Cos", "Cosh"}, opposite, same},
    {true, {"Sin"}, times_i, over_i, "Sinh"},
    {true, {"Cos"}, times_i, same, "Cosh"},
    {true, {"Tan"}, times_i, over_i, "Tanh"},
    {true, {"Asin"}, times_i, over_i, "Asinh"},
    {true, {"Atan"}, times_i, over_i, "Atanh"},
};

std::uint64_t sign_of(const Function& f) { return std::uint64_t{1} << (8 * f.part_size() - 1); }

template <class Parts> Parts turned(const Function& f, const Parts& parts, const Turn& turn) {
  Parts result = parts;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const std::size_t from = turn[i] == 0 ? i : std::abs(turn[i]) - 1;
    if (from < parts.size()) result[i] = turn[i] < 0 ? parts[from] ^ sign_of(f) : parts[from];
  }
  return result;
}

/// The function of another family with the type and suffix of this one; CIS is named by the type of its results.
const Function& sibling(const Function& f, std::string_view family) {
  std::string name = "kels" + std::string(family) + std::string(f.name.substr(4 + f.family.size()));
  if (family == "CIS") name.replace(name.find('_'), 4, f.is_float() ? "_32fc" : "_64fc");
  return *harness::find_function(name);
}

/// The parts of a result; NaNs are all the same here, whatever their sign.
std::vector<std::uint64_t> parts_of(const Function& f, const Strip& strip, int i) {
  std::vector<std::uint64_t> parts;
  for (const Bytes& destination : strip.destination)
    for (std::size_t p = 0, n = f.destination_size() / f.part_size(); p < n && !destination.empty(); ++p) {
      const std::uint64_t bits = part_of(destination, f.part_size(), i * n + p);
      parts.push_back(is_nan(f.is_float(), bits) ? bits_of(f.is_float(), std::nan("")) : bits);
    }
  return parts;
}

std::string text(const Function& f, const Element& e) {
  std::string text(f.name);
  for (const int place : places_of(f)) text += " " + special::bits(e[place]).text(f.is_float());
  return text;
}

TEST(Symmetry, HoldsBitForBit) {
  for (const Relation& relation : relations)
    for (const Function& f : harness::all_functions()) {
      if (f.complex_source() != relation.complex || std::ranges::count(relation.families, f.family) == 0) continue;
      const Function& g = relation.other.empty() ? f : sibling(f, relation.other);
      const std::vector<Element> elements = all_elements(f, 5000);
      std::vector<Element> other = elements;
      for (Element& e : other) e = turned(f, e, relation.source);
      const unsigned csr = default_csr | own_rounding(f); // else the flags would not stay
      const Strip a = alone(Callable(f), elements, csr), b = alone(Callable(g), other, csr);
      int wrong = 0;
      for (int i = 0; i < a.count && wrong < 5; ++i) {
        std::vector<std::uint64_t> got = parts_of(f, a, i), expected = turned(g, parts_of(g, b, i), relation.result);
        expected.resize(got.size());
        for (std::uint64_t& bits : expected)
          if (is_nan(f.is_float(), bits)) bits &= ~sign_of(f);
        bool signalling = false; // a signalling NaN beside a number that decides may raise invalid or not
        for (const int place : places_of(f)) signalling |= is_signalling(f.is_float(), elements[i][place]);
        const unsigned differing = (a.flags[i] ^ b.flags[i]) & ~(signalling ? unsigned{invalid} : 0);
        const bool as_one = f.name != g.name || (a.status[i] == b.status[i] && differing == 0);
        if (got == expected && as_one) continue;
        ++wrong;
        ADD_FAILURE() << text(f, elements[i]) << " and " << text(g, other[i]) << ": " << std::hex << got[0] << " and "
                      << expected[0] << std::dec << ", status " << a.status[i] << " and " << b.status[i] << ", flags"
                      << flag_names(a.flags[i]) << " and" << flag_names(b.flags[i]);
      }
    }
}

/// No result is beyond the bounds as floats and doubles have them; those of A21 and A11, computed, are inside the real
/// interval where the bound is no number of the type.
TEST(Bounds, AreKept) {
  constexpr double pi = std::numbers::pi;
  const struct {
    std::vector<std::string_view> families;
    double least, most;
  } rows[] = {{{"Sin", "Cos", "SinCos", "Tanh", "Erf"}, -1, 1},
              {{"Erfc"}, 0, 2},
              {{"CdfNorm"}, 0, 1},
              {{"Atan", "Asin"}, -pi / 2, pi / 2},
              {{"Acos"}, 0, pi},
              {{"Atan2"}, -pi, pi}};
  for (const auto& row : rows)
    for (const Function& f : harness::all_functions()) {
      if (f.complex_source() || std::ranges::count(row.families, f.family) == 0) continue;
      const std::vector<Element> elements = all_elements(f, 5000);
      const Strip strip = alone(Callable(f), elements);
      for (int i = 0; i < strip.count; ++i)
        for (const std::uint64_t bits : parts_of(f, strip, i)) {
          const double y = number_of(f.is_float(), bits);
          EXPECT_TRUE(std::isnan(y) || (y >= rounded(f.is_float(), row.least) && y <= rounded(f.is_float(), row.most)))
              << text(f, elements[i]) << " is " << y;
        }
    }
}

using Complex = std::complex<double>;

Complex ask(const Function& f, const std::vector<special::Value>& source) {
  const special::Answer a = special::ask(f, source);
  return {number_of(f.is_float(), a.parts[0]), a.parts.size() > 1 ? number_of(f.is_float(), a.parts[1]) : 0};
}

TEST(ComplexInverse, TheSignOfAZeroTellsTheSideOfACut) {
  const struct {
    std::string_view family;
    Complex (*exact)(const Complex&);
    bool real_axis;
  } rows[] = {{"Asin", std::asin, true},   {"Acos", std::acos, true},    {"Acosh", std::acosh, true},
              {"Atanh", std::atanh, true}, {"Asinh", std::asinh, false}, {"Atan", std::atan, false}};
  for (const auto& row : rows)
    for (const Function& f : harness::all_functions())
      for (const double along : {-2.0, -1.125, -0.5, 0.0, 0.5, 1.125, 2.0, 3e8})
        for (const double across : {0.0, -0.0}) {
          if (f.family != row.family || !f.complex_source()) continue;
          const Complex z = row.real_axis ? Complex(along, across) : Complex(across, along);
          const Complex got = ask(f, {z.real(), z.imag()}), exact = row.exact(z);
          EXPECT_LE(std::abs(got - exact), std::ldexp(std::abs(exact), -std::min(f.suffix_bits(), 51))) << f.name << z;
          EXPECT_EQ(std::signbit(got.real()), std::signbit(exact.real())) << f.name << z;
          EXPECT_EQ(std::signbit(got.imag()), std::signbit(exact.imag())) << f.name << z;
          // acosh z = i acos z above the real axis and on its upper side, -i acos z below
          if (f.family != "Acosh") continue;
          for (const double up : {0.0, 0.5, 2.5, 0x1p40}) {
            const double y = std::copysign(up + across, across);
            const Complex w = ask(f, {along, y}), v = ask(sibling(f, "Acos"), {along, y});
            EXPECT_EQ(w, (std::signbit(y) ? Complex(v.imag(), -v.real()) : Complex(-v.imag(), v.real())))
                << f.name << z;
          }
        }
}

TEST(ComplexPow, OfRealOperandsIsTheRealPower) {
  for (const Function& f : harness::all_functions())
    for (const double x : {0.0, 0x1p-130, 0.3125, 1.0, 1.0625, 77.0, 0x1p90, special::inf})
      for (const double c : {-special::inf, -30.5, -1.0, 0.4375, 1.0, 2.0, 19.0, special::inf}) {
        if (f.family != "Pow" || !f.complex_source()) continue;
        std::string real(f.name);
        real.erase(real.find("c_"), 1);
        EXPECT_EQ(ask(f, {x, 0.0, c, 0.0}).real(), ask(*harness::find_function(real), {x, c}).real())
            << f.name << " " << x << " " << c;
      }
}

// f(conj z, c) = conj f(z, c)
TEST(ComplexPow, OfAConjugateBase) {
  const double parts[] = {0.0, -0.75, 1.0, -1.0, 1.125, -3.5, 0x1p-130, -0x1p100, 0x1.8p127, special::inf};
  for (const Function& f : harness::all_functions())
    for (const double x : parts)
      for (const double y : parts)
        for (const double c : {2.5, -3.0}) {
          if (f.family != "Pow" || !f.complex_source()) continue;
          const Complex a = ask(f, {x, y, c, 0.0}), b = ask(f, {x, -y, c, 0.0});
          EXPECT_TRUE(std::isnan(a.real()) ? std::isnan(b.real()) : a.real() == b.real()) << f.name << x << " " << y;
          EXPECT_TRUE(std::isnan(a.imag()) ? std::isnan(b.imag()) : a.imag() == -b.imag()) << f.name << x << " " << y;
        }
}

} // namespace
