// The functions of registers, called by hand in all forms of the vector function ABI: the bits of the array functions
// of the same width, their flags, nothing from lanes outside a mask.
#include "caller.hpp"
#include "driver.hpp"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <sstream>
#include <xmmintrin.h>

namespace {

using namespace driver;
using harness::Function;

struct Row {
  const char *name, *family;
  bool libm;
};
constexpr Row rows[] = {
#define KELVM_REGISTERS(name, family, shape) {#name, #family, false},
#define KELVM_REGISTERS_LIBM(name, family, shape) {#name, #family, true},
#include "registers/functions.def"
};

/// A function by one of its names in one of the two libraries.
struct Named {
  std::string name; // in C
  Callable array;
  const harness::Library* library;

  const Function& function() const { return array.function; }
  void* address(const Caller& caller, char kind, const char* arguments) const {
    const std::string full =
        std::string("_ZGV") + caller.letter + kind + std::to_string(caller.lanes(function())) + arguments + "_" + name;
    void* found = library->symbol(full.c_str());
    EXPECT_NE(found, nullptr) << library->path() << " lacks " << full;
    return found;
  }
};

std::vector<Named> all_named() {
  static const harness::Library full(KELVM_SIMD), fast(KELVM_SIMD_FAST);
  std::vector<Named> all;
  for (const Row& row : rows)
    for (const bool is_float : {false, true})
      for (const auto* library : {&full, &fast}) {
        const char* accuracy =
            library == &full ? (is_float ? "_32f_A24" : "_64f_A53") : (is_float ? "_32f_A21" : "_64f_A50");
        const Function* function = harness::find_function(std::string("kels") + row.family + accuracy);
        if (!function) throw std::runtime_error(std::string("no function ") + row.family + accuracy);
        for (const char* prefix : {"kelvm_", ""})
          if (*prefix || row.libm)
            all.push_back({std::string(prefix) + row.name + (is_float ? "f" : ""), Callable(*function), library});
      }
  return all;
}
const std::vector<Named>& named() {
  static const std::vector<Named> all = all_named();
  return all;
}
std::vector<Named> named_with_results(int results) {
  std::vector<Named> list = named();
  std::erase_if(list, [=](const Named& named) { return named.function().destinations() != results; });
  return list;
}

const Caller& tested() {
  const char* letter = std::getenv("KELVM_TESTED_LETTER");
  switch (letter ? *letter : 'b') {
  case 'c':
    return caller_c;
  case 'd':
    return caller_d;
  case 'e':
    return caller_e;
  default:
    return caller_b;
  }
}

/// Results in two destinations, and how the call ended.
struct Results {
  alignas(64) unsigned char first[64], second[64];
  Ending ending;
};

/// Calls f(arguments) for the lanes of the strip from `from` on.
template <class F> Results run(const Strip& strip, const Function& function, int from, F f) {
  Results r;
  const std::size_t at = from * function.source_size();
  std::memset(r.first, 0xA5, sizeof r.first);
  std::memset(r.second, 0xA5, sizeof r.second);
  _mm_setcsr(default_csr);
  f(harness::Arguments{strip.source[0].data() + at, function.sources() == 2 ? strip.source[1].data() + at : nullptr,
                       nullptr, r.first, r.second, 0});
  r.ending.csr = _mm_getcsr();
  _mm_setcsr(default_csr);
  r.ending.status = kelStatusOk; // there is none: that of the array call
  for (int i = from; i < from + tested().lanes(function); ++i)
    if (strip.status[i] != kelStatusOk) r.ending.status = strip.status[i];
  return r;
}

/// Elements of all kinds, and of all orders of magnitude.
std::vector<Element> elements_of(const Function& function) {
  std::vector<Element> elements = all_elements(function, 400);
  std::mt19937_64 random(7);
  const int lowest = function.format().exponent_min - 1, highest = function.format().exponent_max;
  for (int e = lowest; e < highest; ++e)
    for (int repeated = 0; repeated < 4; ++repeated) {
      Element element{};
      for (int place : places_of(function)) {
        const double digits = 1 + double(random() >> 12) * 0x1p-52;
        const int exponent = place == 0 || random() % 2 ? e : int(random() % (highest - lowest)) + lowest;
        element[place] = bits_of(function.is_float(), (random() % 2 ? digits : -digits) * std::ldexp(1.0, exponent));
      }
      elements.push_back(element);
    }
  std::erase_if(elements, [&](const Element& element) {
    for (int place : places_of(function))
      if (is_signalling(function.is_float(), element[place])) return true;
    return false;
  });
  return elements;
}

class Registers : public testing::TestWithParam<Named> {
protected:
  const Named& named = GetParam();
  const Function& function = named.function();
  const int lanes = tested().lanes(function);
  const char* vectors = function.shape == harness::Shape::Binary ? "vv" : "v";
};
class OneResult : public Registers {};
class TwoResults : public Registers {};

std::string test_name(const testing::TestParamInfo<Named>& info) {
  return info.param.name + "_" + std::string(info.param.function().suffix);
}
INSTANTIATE_TEST_SUITE_P(Functions, Registers, testing::ValuesIn(named()), test_name);
INSTANTIATE_TEST_SUITE_P(Functions, OneResult, testing::ValuesIn(named_with_results(1)), test_name);
INSTANTIATE_TEST_SUITE_P(Functions, TwoResults, testing::ValuesIn(named_with_results(2)), test_name);

TEST_P(Registers, BitsAndFlagsAreThoseOfTheArrayFunction) {
  const bool two = function.shape == harness::Shape::TwoOutputs;
  void* const address = named.address(tested(), 'N', two ? (function.is_float() ? "vl4l4" : "vl8l8") : vectors);
  ASSERT_NE(address, nullptr);
  const auto call = [&](const harness::Arguments& a) { tested().call(address, function, a); };
  const Strip strip = alone(named.array, elements_of(function));
  for (int i = 0; i + lanes <= strip.count; i += lanes) {
    const Results r = run(strip, function, i, call);
    ASSERT_TRUE(as_alone(named.array, strip, i, lanes, r.ending, r.first, r.second));
  }
  // Alone in a register: no flag of a neighbour's hides one that nobody earned.
  for (int i = 0; i < strip.count; ++i) {
    const Strip same = pick(named.array, strip, {i}, lanes);
    const Results r = run(same, function, 0, call);
    EXPECT_TRUE(as_alone(named.array, same, 0, lanes, r.ending, r.first, r.second));
  }
}

TEST_P(OneResult, LanesOutsideTheMaskRaiseNothingAndDoNotMatter) {
  void* const address = named.address(tested(), 'M', vectors);
  ASSERT_NE(address, nullptr);
  const Strip strip = alone(named.array, elements_of(function));
  for (int i = 0; i < strip.count; ++i) {
    // One lane of an element, the others of a signalling NaN, which no function may touch.
    Strip same = pick(named.array, strip, {i}, lanes);
    const int lane = i % lanes;
    const std::size_t size = function.source_size();
    for (int source = 0; source < function.sources(); ++source)
      for (int other = 0; other < lanes; ++other)
        if (other != lane) {
          const std::uint64_t nan = function.is_float() ? 0x7FA00000 : 0x7FF4000000000000;
          std::memcpy(same.source[source].data() + other * size, &nan, size);
        }
    const Results r = run(same, function, 0,
                          [&](const harness::Arguments& a) { tested().call_masked(address, function, a, 1u << lane); });
    EXPECT_EQ(r.ending.flags(), strip.flags[i]) << named.array << " element " << i;
    ASSERT_EQ(part_of({r.first, r.first + 64}, size, lane), part_of(strip.destination[0], size, i));
  }
}

TEST_P(TwoResults, GoWhereThePointersPoint) {
  void* const address = named.address(tested(), 'N', "vvv");
  ASSERT_NE(address, nullptr);
  const Strip strip = alone(named.array, elements_of(function));
  const std::size_t size = function.source_size();
  for (int i = 0; i + lanes <= strip.count; i += lanes) {
    const Results r =
        run(strip, function, i, [&](const harness::Arguments& a) { tested().call_scattered(address, function, a); });
    for (int lane = 0; lane < lanes; ++lane) {
      const int to = lanes - 1 - lane;
      ASSERT_EQ(part_of({r.first, r.first + 64}, size, to), part_of(strip.destination[0], size, i + lane));
      ASSERT_EQ(part_of({r.second, r.second + 64}, size, to), part_of(strip.destination[1], size, i + lane));
    }
  }
}

/// With subnormal numbers flushed, as programs compiled with -ffast-math have it: results and arguments far from them
/// are as they were.
TEST_P(Registers, FlushingToZeroIsNotSeenAwayFromTheSubnormals) {
  const bool two = function.shape == harness::Shape::TwoOutputs;
  void* const address = named.address(tested(), 'N', two ? (function.is_float() ? "vl4l4" : "vl8l8") : vectors);
  ASSERT_NE(address, nullptr);
  const Strip strip = alone(named.array, elements_of(function));
  const std::size_t size = function.source_size();
  constexpr unsigned flushing = default_csr | flush_to_zero | denormals_are_zero;
  // Squares of floats below 2^-63 are subnormal.
  const int exponent = !function.is_float() ? -900 : function.name == "kelsHypot_32f_A21" ? -48 : -70;
  const auto far = [&](std::uint64_t bits) {
    const double x = std::fabs(number_of(function.is_float(), bits));
    return !is_finite(function.is_float(), bits) || x == 0 || x > std::ldexp(1.0, exponent);
  };
  for (int i = 0; i < strip.count; ++i) {
    bool judged = true;
    for (int source = 0; source < function.sources(); ++source) judged &= far(part_of(strip.source[source], size, i));
    for (int d = 0; d < function.destinations(); ++d) judged &= far(part_of(strip.destination[d], size, i));
    if (!judged) continue;
    const Strip same = pick(named.array, strip, {i}, lanes);
    const Results r = run(same, function, 0, [&](const harness::Arguments& a) {
      _mm_setcsr(flushing);
      tested().call(address, function, a);
    });
    EXPECT_EQ(r.ending.csr & ~all_flags, flushing);
    EXPECT_EQ(part_of({r.first, r.first + 64}, size, 0), part_of(strip.destination[0], size, i))
        << named.array << " element " << std::hexfloat
        << number_of(function.is_float(), part_of(strip.source[0], size, i));
  }
}

/// The scalar functions: bits of the widest register that they are computed in here.
TEST(Scalars, BitsAreThoseOfTheArrayFunction) {
  const std::string build = harness::processor_runs("avx2") ? "avx2" : "sse41";
  if (tested_build() != build) GTEST_SKIP() << "they have the bits of the " << build << " build here";
  for (const Named& named : named()) {
    if (!named.name.starts_with("kelvm_")) continue;
    const Function& function = named.function();
    void* const address = named.library->symbol(named.name.c_str());
    ASSERT_NE(address, nullptr) << named.name;
    const std::vector<Element> elements = all_elements(function, 100);
    const Strip strip = alone(named.array, elements);
    const std::size_t size = function.source_size();
    for (int i = 0; i < strip.count; ++i) {
      unsigned char first[8], second[8];
      const auto compute = [&]<class T>(T) {
        T x, y;
        std::memcpy(&x, strip.source[0].data() + i * size, size);
        if (function.sources() == 2) std::memcpy(&y, strip.source[1].data() + i * size, size);
        T result;
        if (function.shape == harness::Shape::TwoOutputs) {
          T other;
          reinterpret_cast<void (*)(T, T*, T*)>(address)(x, &result, &other);
          std::memcpy(second, &other, size);
        } else if (function.sources() == 2) {
          result = reinterpret_cast<T (*)(T, T)>(address)(x, y);
        } else {
          result = reinterpret_cast<T (*)(T)>(address)(x);
        }
        std::memcpy(first, &result, size);
      };
      function.is_float() ? compute(0.0f) : compute(0.0);
      ASSERT_EQ(std::memcmp(first, strip.destination[0].data() + i * size, size), 0) << named.name << " element " << i;
      if (function.destinations() == 2) {
        ASSERT_EQ(std::memcmp(second, strip.destination[1].data() + i * size, size), 0);
      }
    }
  }
}

/// The names that a shared object wants from others.
std::string wanted_by(const std::string& path) {
  std::string names;
  FILE* const nm = popen(("nm -D --undefined-only " + path).c_str(), "r");
  char line[256];
  while (nm && std::fgets(line, sizeof line, nm)) {
    const std::string_view word(line);
    names += word.substr(word.rfind(' '), word.find_first_of("@\n") - word.rfind(' '));
    names += '\n';
  }
  if (nm) pclose(nm);
  return names;
}

/// The modules of loops.c that CMakeLists.txt lists for the letter: compilers call the functions, and rightly.
TEST(Loops, AreVectorisedAndComputeTheBitsOfTheArrayFunctions) {
  const char* const paths = std::getenv("KELVM_TESTED_LOOPS");
  if (!paths) GTEST_SKIP() << "no modules of loops: set KELVM_TESTED_LOOPS";
  std::istringstream list(paths);
  for (std::string path; std::getline(list, path, ':');) {
    const harness::Library module(path);
    const std::string wanted = wanted_by(path);
    const bool own_names = path.find("kelvm_names") != path.npos;
    int vectorised = 0;
    for (const Named& named : named()) {
      const Function& function = named.function();
      if (named.name.starts_with("kelvm_") != own_names) continue;
      if (function.suffix != "A24" && function.suffix != "A53") continue;
      const char* forms = function.shape == harness::Shape::Binary       ? "vv_"
                          : function.shape == harness::Shape::TwoOutputs ? "vvv_"
                                                                         : "v_";
      const std::string variant = std::string(" _ZGV") + tested().letter + "N" +
                                  std::to_string(tested().lanes(function)) + forms + named.name + "\n";
      if (wanted.find(variant) == wanted.npos) {
        // Of sincos g++ takes the C library's nowhere, and with AVX alone has no registers for eight pointers. Clang 14
        // knows five functions.
        EXPECT_TRUE(path.find("by_clang") != path.npos || named.name.find("sincos") != named.name.npos)
            << path << " does not call" << variant;
        continue;
      }
      ++vectorised;
      constexpr int count = 1024; // a multiple of all lengths: no element is computed alone
      const std::vector<Element> elements = domain_elements(function, count);
      const Bytes x = packed(function, 0, elements), y = function.sources() == 2 ? packed(function, 1, elements) : x;
      Bytes expected[2], found[2];
      for (Bytes* results : {expected, found})
        for (int d = 0; d < 2; ++d) results[d].resize(count * function.destination_size());
      named.array.call({x.data(), y.data(), nullptr, expected[0].data(), expected[1].data(), count});
      const std::string symbol = "loop_" + named.name.substr(own_names ? 6 : 0);
      void* const loop = module.symbol(symbol.c_str());
      ASSERT_NE(loop, nullptr) << symbol;
      harness::call_at(loop, function, {x.data(), y.data(), nullptr, found[0].data(), found[1].data(), count});
      EXPECT_EQ(found[0], expected[0]) << path << " " << named.name;
      if (function.destinations() == 2) {
        EXPECT_EQ(found[1], expected[1]) << path << " " << named.name;
      }
    }
    EXPECT_GE(vectorised, 10) << path;
  }
}

} // namespace
