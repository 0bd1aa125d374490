// The rounding family: integer arithmetic is the reference.
#include "special.hpp"

#include <bit>
#include <cmath>
#include <cstring>

namespace {

using namespace driver;
using special::bits;

enum Direction : unsigned { nearest = 0, down = 0x2000, up = 0x4000, toward_zero = 0x6000 };

/// x, at most 2^62 in magnitude, rounded to an integral value of its sign, through integers.
double rounded(double x, Direction direction) {
  const double whole = static_cast<double>(static_cast<std::int64_t>(x)), rest = std::fabs(x - whole);
  const double away = whole + (x < 0 ? -1.0 : 1.0);
  const bool outward = direction == up        ? x > 0
                       : direction == down    ? x < 0
                       : direction == nearest ? rest > 0.5 || (rest == 0.5 && static_cast<std::int64_t>(x) % 2 != 0)
                                              : false;
  return std::copysign(rest != 0 && outward ? away : whole, x);
}

template <class T> void against_integers(const std::string& type) {
  const harness::Function& any = *harness::find_function("kelsCeil_" + type);
  std::vector<Element> elements = special_elements(any);
  for (const Element& e : domain_elements(any, 20000)) elements.push_back(e);
  std::erase_if(elements, [&](const Element& e) {
    return is_nan(any.is_float(), e[0]) ||
           !(std::fabs(std::bit_cast<T>(
                 static_cast<std::conditional_t<sizeof(T) == 4, std::uint32_t, std::uint64_t>>(e[0]))) < T(0x1p62));
  });
  const std::size_t n = elements.size();
  const Bytes source = packed(any, 0, elements);
  std::vector<T> x(n), y(n), z(n);
  std::memcpy(x.data(), source.data(), source.size());
  const auto call = [&](const char* family, unsigned mode) {
    const Callable s(*harness::find_function("kels" + std::string(family) + "_" + type));
    const Ending ending =
        s.call({x.data(), nullptr, nullptr, y.data(), z.data(), static_cast<int>(n)}, default_csr | mode);
    EXPECT_EQ(ending.status, kelStatusOk);
    return ending;
  };
  const auto expect = [&](const char* what, auto reference) {
    for (std::size_t i = 0; i < n; ++i) {
      const T expected = static_cast<T>(reference(static_cast<double>(x[i])));
      ASSERT_TRUE(y[i] == expected && std::signbit(y[i]) == std::signbit(expected))
          << what << "_" << type << " of " << std::hexfloat << x[i] << ": " << y[i];
    }
  };
  for (unsigned mode : {nearest, down, up, toward_zero}) {
    call("Ceil", mode);
    expect("Ceil", [](double v) { return rounded(v, up); });
    call("Floor", mode);
    expect("Floor", [](double v) { return rounded(v, down); });
    call("Trunc", mode);
    expect("Trunc", [](double v) { return rounded(v, toward_zero); });
    call("Round", mode);
    expect("Round", [](double v) {
      const double t = rounded(v, toward_zero), r = std::fabs(v - t) >= 0.5 ? t + std::copysign(1.0, v) : t;
      return r == 0 ? 0.0 : r;
    });
    EXPECT_NE(call("Rint", mode).csr & inexact, 0u);
    expect("Rint", [=](double v) { return rounded(v, Direction{mode}); });
    EXPECT_EQ(call("NearbyInt", mode).csr & inexact, 0u);
    expect("NearbyInt", [=](double v) { return rounded(v, Direction{mode}); });
    call("Modf", mode);
    expect("Modf", [](double v) { return rounded(v, toward_zero); });
    std::swap(y, z);
    expect("Modf, fraction", [](double v) { return std::copysign(v - rounded(v, toward_zero), v); });
    std::swap(y, z);
  }
}

TEST(Rounding, AgreesWithIntegerArithmeticInEveryCallersMode) {
  against_integers<float>("32f");
  against_integers<double>("64f");
}

TEST(Rounding, InexactIsRaisedForValuesThatAreNotIntegral) {
  for (const char* family : {"Ceil", "Floor", "Trunc", "Rint", "NearbyInt"})
    for (const char* type : {"_32f", "_64f"}) {
      const harness::Function& m = *harness::find_function("kels" + std::string(family) + type);
      EXPECT_EQ((special::ask(m, {0.5}).ending.csr & inexact) != 0, std::string_view(family) != "NearbyInt") << m.name;
      EXPECT_EQ(special::ask(m, {8.0}).ending.csr & inexact, 0u) << m.name;
    }
}

TEST(Rounding, RintFollowsTheCallersFlushMode) {
  constexpr unsigned up_with_daz = 0x4040;
  const harness::Function& rint = *harness::find_function("kelsRint_64f");
  EXPECT_EQ(special::ask(rint, {bits(1)}, default_csr | up).parts[0], bits_of(false, 1.0));
  EXPECT_EQ(special::ask(rint, {bits(1)}, default_csr | up_with_daz).parts[0], 0u);
}

} // namespace
