// The floating-point environment: the caller's mode, its control words, and the exception flags.
#include "driver.hpp"
#include "inputs.hpp"

#include <algorithm>
#include <cmath>
#include <csignal>
#include <cstdint>
#include <random>
#include <sstream>
#include <ucontext.h>

namespace {

using namespace driver;

/// Whether it computes in the caller's mode.
bool follows_the_caller(const harness::Function& m) {
  for (const char* family : {"Add", "Sub", "Mul", "Sqr", "Abs", "Rint", "NearbyInt"})
    if (m.family == family && !m.complex_source()) return true;
  return false;
}

std::uint16_t x87_word() {
  std::uint16_t word;
  asm volatile("fnstcw %0" : "=m"(word));
  return word;
}
void set_x87_word(std::uint16_t word) { asm volatile("fldcw %0" : : "m"(word)); }

class Modes : public testing::TestWithParam<Callable> {
protected:
  const Callable& s = GetParam();
  const harness::Function& function = s.function;
  const Sample& sample = sample_of(s);
};
INSTANTIATE_TEST_SUITE_P(Functions, Modes, testing::ValuesIn(callables()),
                         [](const auto& info) { return info.param.name(); });

TEST_P(Modes, TheCallersModeIsHonouredOrOverruledAndAlwaysGivenBack) {
  constexpr int len = 107, few = 3; // so few ordinary elements may be computed with no look at the control word
  Bytes dst1(len * function.destination_size()), dst2 = dst1;
  for (unsigned round : roundings)
    for (unsigned flush : flushings) {
      const unsigned mode = round | flush, own = own_rounding(function);
      // Where the caller's mode decides, the elements one at a time in that mode are the measure.
      const bool callers = follows_the_caller(function);
      const auto check = [&](const Strip& computed, int count) {
        Strip strip =
            callers ? alone(s, {&computed.elements[0], &computed.elements[count]}, default_csr | mode) : computed;
        std::fill(strip.flags.begin(), strip.flags.end(), 0u);
        for (unsigned found : {0u, unsigned{all_flags}}) {
          const unsigned csr = default_csr | mode | found;
          Ending ending =
              s.call({strip.source[0].data(), strip.source[1].data(), nullptr, dst1.data(), dst2.data(), count}, csr);
          EXPECT_EQ(ending.csr & ~all_flags, csr & ~all_flags) << s << ": control word " << std::hex << csr;
          EXPECT_EQ(ending.csr & found, found) << s << ": flags that the caller had raised are gone";
          ASSERT_TRUE(callers || mode == own || ending.csr == csr)
              << s << ": the control word was changed for the call, so all of it comes back";
          ending.csr &= ~honest_flags; // what follows is about values
          ASSERT_TRUE(as_alone(s, strip, 0, count, ending, dst1.data(), dst2.data()))
              << "control word " << std::hex << csr;
        }
      };
      check(sample.mixed, len);
      for (int i = 0; i < 30; i += few) check(pick(s, sample.plain, {i, i + 1, i + 2}, few), few);
      if (HasFatalFailure()) return;
    }
}

TEST_P(Modes, TheX87WordIsAsFoundAndDoesNotMatter) {
  const std::uint16_t found = x87_word();
  for (std::uint16_t word : {0x037F, 0x007F, 0x0C7F}) { // extended; single precision; toward zero in single precision
    set_x87_word(word);
    const auto result = as_alone(s, sample.mixed, 0, 107);
    const std::uint16_t left = x87_word();
    set_x87_word(found);
    EXPECT_EQ(left, word) << s;
    EXPECT_TRUE(result);
  }
}

/// Where a family's flags follow rules of their own.
enum class Rule {
  operation,       // no warnings: the flags are those of the IEEE operations on the elements
  arithmetic,      // flags come from computing the result: none with a warning for stored zeros and infinities, exact
                   // subnormals
  silent_infinity, // an infinity without a warning may raise overflow
};
struct Exception {
  std::string_view family, suffix;
  bool complex;
  Rule rule;
};
constexpr Exception exceptions[] = {
    {"Add", "", false, Rule::operation},          {"Add", "", true, Rule::operation},
    {"Sub", "", false, Rule::operation},          {"Sub", "", true, Rule::operation},
    {"Mul", "", false, Rule::operation},          {"Sqr", "", false, Rule::operation},
    {"Round", "", false, Rule::operation},        {"Exp", "", false, Rule::arithmetic},
    {"Exp", "A26", false, Rule::silent_infinity},
};
bool follows(const harness::Function& m, Rule rule) {
  for (const Exception& e : exceptions)
    if (e.family == m.family && (e.suffix.empty() || e.suffix == m.suffix) && e.complex == m.complex_source() &&
        e.rule == rule)
      return true;
  return false;
}

TEST_P(Modes, AnElementRaisesTheFlagOfItsCodeAndNoOther) {
  const bool is_float = function.is_float(), operation = follows(function, Rule::operation);
  const Strip& strip = sample.all;
  const std::vector<Element>& elements = strip.elements;
  const std::size_t part = function.part_size(), n = function.destination_size() / part;
  // Of two sources or parts, one that is no NaN may decide: infinities, the exponent 0.
  const bool one_part = places_of(function).size() == 1 && function.shape != harness::Shape::ScalarPower;
  for (int i = 0; i < strip.count; ++i) {
    bool nan_in = false, signalling_in = false, tiny = false, infinite = false, nan = false, all_nan = true;
    for (int place : places_of(function)) {
      nan_in |= is_nan(is_float, elements[i][place]);
      signalling_in |= is_signalling(is_float, elements[i][place]);
    }
    for (int d = 0; d < function.destinations(); ++d)
      for (std::size_t p = 0; p < n; ++p) {
        const std::uint64_t bits = part_of(strip.destination[d], part, i * n + p);
        nan |= is_nan(is_float, bits);
        all_nan &= is_nan(is_float, bits);
        infinite |= !is_nan(is_float, bits) && !is_finite(is_float, bits);
        tiny |= is_tiny(is_float, bits);
      }
    const kelStatus status = strip.status[i];
    const unsigned raised = strip.flags[i];
    unsigned demanded = flag_of(status), allowed = demanded | (tiny ? underflow : 0u);
    if (signalling_in) allowed |= invalid;
    if (operation) allowed |= (infinite ? overflow : 0u) | (nan || function.family == "Round" ? invalid : 0u);
    if (status != kelStatusOk && !one_part) allowed |= (infinite ? overflow : 0u) | (nan ? invalid : 0u);
    if (follows(function, Rule::arithmetic) && (tiny || infinite)) demanded = 0;
    if (follows(function, Rule::silent_infinity) && infinite) allowed |= overflow;
    const auto text = [&] {
      std::ostringstream out;
      out << s << ": source" << std::hex;
      for (int place : places_of(function)) out << " 0x" << elements[i][place];
      out << std::dec << ", status " << status << ", raised" << flag_names(raised);
      return out.str();
    };
    ASSERT_EQ(demanded & ~raised, 0u) << text() << "; missing:" << flag_names(demanded & ~raised);
    ASSERT_EQ(raised & ~allowed, 0u) << text() << "; not earned:" << flag_names(raised & ~allowed);
    ASSERT_TRUE(status == kelStatusOk || flag_of(status) != 0) << text();
    ASSERT_TRUE(status == kelStatusOk ||
                (!operation && own_rounding(function) == nearest && !follows_the_caller(function)))
        << text();
    ASSERT_TRUE(!(one_part && nan_in) || (all_nan && (signalling_in || status == kelStatusOk))) << text();
    ASSERT_TRUE(status != kelStatusDomain || nan) << text();
    ASSERT_TRUE(status != kelStatusSingularity || infinite) << text();
  }
}

/// Notes the exceptions that trap; the operation is made again with them masked.
class Traps {
public:
  Traps() {
    seen_ = 0;
    struct sigaction ours = {};
    ours.sa_flags = SA_SIGINFO;
    ours.sa_sigaction = [](int, siginfo_t*, void* context) {
      auto& csr = static_cast<ucontext_t*>(context)->uc_mcontext.fpregs->mxcsr;
      const unsigned trapped = csr & ~(csr >> 7) & all_flags;
      seen_ = seen_ | trapped;
      csr |= trapped << 7;
    };
    sigaction(SIGFPE, &ours, &before_);
  }
  ~Traps() { sigaction(SIGFPE, &before_, nullptr); }
  /// Those since the last time.
  unsigned seen() {
    const unsigned flags = seen_;
    seen_ = 0;
    return flags;
  }

private:
  struct sigaction before_;
  static inline volatile unsigned seen_ = 0;
};

TEST_P(Modes, UnmaskedExceptionsTrapWhereAnElementEarnsThemAndOnlyThere) {
  const bool callers = follows_the_caller(function);
  const unsigned own = own_rounding(function);
  // The IEEE operations in the caller's mode: an exact subnormal number traps as well.
  const unsigned unmasked = callers ? honest_flags & ~unsigned{underflow} : honest_flags;
  const Strip& found = sample.all;
  const Strip all = own == 0 ? found : alone(s, found.elements, default_csr | own);
  std::vector<int> quiet;
  for (int i = 0; i < all.count; ++i)
    if (all.flags[i] == 0 && all.status[i] == kelStatusOk) quiet.push_back(i);
  const int count = static_cast<int>(quiet.size());
  const Strip together = pick(s, all, quiet, count);
  Traps traps;
  for (unsigned mode : {own, flush_to_zero | up}) {
    if (callers && mode != own) continue;
    const unsigned csr = (default_csr & ~(unmasked << 7)) | mode;
    ASSERT_TRUE(as_alone(s, together, 0, count, csr));
    for (int i = 0; i < count; ++i) ASSERT_TRUE(as_alone(s, together, i, 1, csr));
    ASSERT_EQ(traps.seen(), 0u) << s << ": a trap that no element has earned";
    for (int i = 0; i < all.count; ++i) {
      if (all.flags[i] == 0) continue;
      ASSERT_TRUE(as_alone(s, all, i, 1, csr));
      ASSERT_EQ(traps.seen(), all.flags[i] & unmasked) << s << ": element " << i << " of its sample";
    }
  }
}

/// Numbers of everyday magnitudes, many of them next to where remainders, logarithms or roots are small.
double everyday_number(accuracy::Random& random, bool narrow) {
  const double any = std::exp2(narrow ? random.uniform(-9, 3) : random.uniform(-62, 40));
  const double multiple = std::round(any) * (random.one_in(2) ? M_PI / 64 : M_LN2 / 64);
  const double beside = 1 + std::exp2(random.uniform(-53, -1)) * (random.one_in(2) ? 1 : -1);
  return (random.one_in(2) ? 1 : -1) * (random.one_in(2) ? any : random.one_in(2) ? multiple : beside);
}

// Long calls look for flags that no element has earned, short ones only where an element may raise such.
TEST_P(Modes, ShortCallsRaiseTheFlagsOfLongOnes) {
  constexpr int few = 3, some = 150, many = 600; // less than any block, whole blocks, more than four of any
  accuracy::Random random{61};
  Bytes dst1(many * function.destination_size()), dst2 = dst1;
  const auto flags_of = [&](const std::vector<Element>& elements) {
    const Bytes x = packed(function, 0, elements), y = packed(function, 1, elements);
    return s.call({x.data(), y.data(), nullptr, dst1.data(), dst2.data(), static_cast<int>(elements.size())}).flags();
  };
  for (int i = 0; i < 4000; ++i) {
    const int count = i % 32 == 0 ? some : few;
    std::vector<Element> elements(count, Element{});
    for (Element& e : elements)
      for (std::uint64_t& part : e) part = bits_of(function.is_float(), everyday_number(random, i % 64 < 32));
    const unsigned raised = flags_of(elements);
    if (raised == 0) continue;
    for (int k = count; k < many; ++k) elements.push_back(elements[k - count]);
    std::ostringstream text;
    for (int k = 0; k < count; ++k)
      for (int place : places_of(function)) text << (place == 0 ? "; 0x" : " 0x") << std::hex << elements[k][place];
    ASSERT_EQ(raised & ~flags_of(elements), 0u) << s << text.str();
  }
}

// Bases and exponents of every kind, and exponents that only one of the two takes at once.
TEST(OneExponent, GivesTheBitsTheStatusAndTheFlagsOfAnArrayOfIt) {
  for (const harness::Function& one : harness::all_functions()) {
    if (one.shape != harness::Shape::ScalarPower) continue;
    const harness::Function& many = *harness::find_function("kelsPow" + std::string(one.name.substr(8)));
    const Callable pow(many);
    const std::size_t size = many.source_size();
    constexpr int len = 150; // more than the largest block
    std::vector<Element> elements = special_elements(many);
    std::shuffle(elements.begin(), elements.end(), std::minstd_rand(11));
    const std::vector<Element> ordinary = domain_elements(many, len);
    Bytes dst1(len * size), dst2 = dst1;
    for (int i = 0; i + len <= static_cast<int>(elements.size()); ++i) {
      const Element& exponent = elements[i];
      std::vector<Element> bases(i % 2 ? ordinary : std::vector<Element>(&elements[i], &elements[i + len]));
      for (Element& base : bases) std::copy_n(&exponent[2], 2, &base[2]);
      const Bytes x = packed(many, 0, bases), y = packed(many, 1, bases);
      const Ending expected = pow.call({x.data(), y.data(), nullptr, dst1.data(), nullptr, len});
      const Ending ending = Callable(one, exponent).call({x.data(), nullptr, nullptr, dst2.data(), nullptr, len});
      ASSERT_TRUE(dst1 == dst2 && ending.status == expected.status && ending.flags() == expected.flags())
          << one.name << std::hex << ": exponent 0x" << exponent[2] << " 0x" << exponent[3] << std::dec << ", status "
          << ending.status << ", flags" << flag_names(ending.flags()) << "; an array of it: " << expected.status
          << flag_names(expected.flags()) << (dst1 == dst2 ? "" : "; other bits");
    }
  }
}

} // namespace
