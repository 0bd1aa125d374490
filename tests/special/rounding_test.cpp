// Rint and NearbyInt in the caller's mode, for which integer arithmetic is the reference; inexact.
#include "special.hpp"

#include <cmath>

namespace {

using namespace driver;
using special::bits;

/// x, at most 2^62 in magnitude, rounded to an integral value of its sign, through integers.
double rounded(double x, Rounding direction) {
  const double whole = static_cast<double>(static_cast<std::int64_t>(x)), rest = std::fabs(x - whole);
  const double away = whole + (x < 0 ? -1.0 : 1.0);
  const bool outward = direction == up        ? x > 0
                       : direction == down    ? x < 0
                       : direction == nearest ? rest > 0.5 || (rest == 0.5 && static_cast<std::int64_t>(x) % 2 != 0)
                                              : false;
  return std::copysign(rest != 0 && outward ? away : whole, x);
}

TEST(Rounding, FollowsTheCallersModeAsIntegersDo) {
  for (const char* name : {"kelsRint_32f", "kelsRint_64f", "kelsNearbyInt_32f", "kelsNearbyInt_64f"}) {
    const harness::Function& f = *harness::find_function(name);
    const auto number = [&](std::uint64_t bits) { return number_of(f.is_float(), bits); };
    std::vector<Element> elements = all_elements(f, 20000);
    std::erase_if(elements, [&](const Element& e) { return !(std::fabs(number(e[0])) < 0x1p62); });
    for (const Rounding mode : roundings) {
      const Strip strip = alone(Callable(f), elements, default_csr | mode);
      for (int i = 0; i < strip.count; ++i)
        ASSERT_EQ(part_of(strip.destination[0], f.part_size(), i),
                  bits_of(f.is_float(), rounded(number(elements[i][0]), mode)))
            << name << " of " << number(elements[i][0]) << " in mode " << std::hex << mode;
    }
  }
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
  const harness::Function& rint = *harness::find_function("kelsRint_64f");
  EXPECT_EQ(special::ask(rint, {bits(1)}, default_csr | up).parts[0], bits_of(false, 1.0));
  EXPECT_EQ(special::ask(rint, {bits(1)}, default_csr | up | denormals_are_zero).parts[0], 0u);
}

} // namespace
