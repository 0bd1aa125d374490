#include "driver.hpp"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <immintrin.h>
#include <map>
#include <mutex>
#include <random>
#include <sstream>
#include <stdexcept>

namespace driver {
namespace {

constexpr double exponents[Callable::scalars][2] = {{2, 0}, {-0.5, 0.25}, {1.0 / 3, 0}, {-3, -1}, {0, 0}};

Element exponent_number(const harness::Function& function, int i) {
  return {0, 0, bits_of(function.is_float(), exponents[i][0]), bits_of(function.is_float(), exponents[i][1])};
}

Ending call_at(void* address, const harness::Function& function, const harness::Arguments& arguments, unsigned csr) {
  const unsigned found = _mm_getcsr();
  _mm_setcsr(csr);
  const kelStatus status = harness::call_at(address, function, arguments);
  const Ending ending{status, _mm_getcsr()};
  _mm_setcsr(found);
  return ending;
}

const unsigned char* at(const Bytes& array, std::size_t offset) {
  return array.empty() ? nullptr : array.data() + offset;
}

std::string element_text(const Callable& s, const Strip& strip, int i) {
  std::ostringstream text;
  for (const int place : places_of(s.function)) text << std::hex << " 0x" << strip.elements[i][place];
  return text.str();
}

std::string hex(const void* bytes, std::size_t part, std::size_t size) {
  std::ostringstream text;
  text << std::hex;
  for (std::size_t offset = 0; offset < size; offset += part) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, static_cast<const char*>(bytes) + offset, part);
    text << (offset ? ", 0x" : "0x") << bits;
  }
  return text.str();
}

template <class Test> bool all_parts(const Callable& s, const Strip& strip, int i, Test test) {
  const auto holds = [&](const Bytes& array, std::size_t size) {
    const std::size_t part = s.function.part_size(), n = size / part;
    for (std::size_t p = 0; p < n; ++p)
      if (!array.empty() && !test(part_of(array, part, i * n + p))) return false;
    return true;
  };
  return holds(strip.source[0], s.function.source_size()) && holds(strip.source[1], s.function.source_size()) &&
         holds(strip.destination[0], s.function.destination_size()) &&
         holds(strip.destination[1], s.function.destination_size());
}

} // namespace

std::string tested_build() {
  const char* build = std::getenv("KELVM_TESTED_BUILD");
  return build ? build : KELVM_TESTED_BUILD;
}

const harness::Library& library(const std::string& build) {
  static std::mutex mutex;
  static std::map<std::string, harness::Library> opened;
  const std::lock_guard lock(mutex);
  auto found = opened.find(build);
  if (found == opened.end())
    found = opened.emplace(build, harness::Library(KELVM_BUILD_ROOT "/" + build + "/libkelvm.so")).first;
  return found->second;
}

Rounding own_rounding(const harness::Function& function) { return function.family == "Modf" ? toward_zero : nearest; }

unsigned flag_of(kelStatus code) {
  switch (code) {
  case kelStatusDomain:
    return invalid;
  case kelStatusSingularity:
    return divide_by_zero;
  case kelStatusOverflow:
    return overflow;
  case kelStatusUnderflow:
    return underflow;
  default:
    return 0;
  }
}

std::string flag_names(unsigned flags) {
  std::string names;
  if (flags & invalid) names += " invalid";
  if (flags & divide_by_zero) names += " divide-by-zero";
  if (flags & overflow) names += " overflow";
  if (flags & underflow) names += " underflow";
  if (flags & inexact) names += " inexact";
  return names.empty() ? " none" : names;
}

Callable::Callable(const harness::Function& m, int scalar) : Callable(m, exponent_number(m, scalar)) {
  if (m.shape == harness::Shape::ScalarPower) name_ += "_exponent" + std::to_string(scalar);
}

Callable::Callable(const harness::Function& m, const Element& with_scalar)
    : function(m), name_(m.name.substr(4)), exponent_(packed(m, 1, {with_scalar})), address_(library().address(m)) {}

std::string Callable::name() const { return name_; }

Ending Callable::call(harness::Arguments arguments, unsigned csr) const {
  arguments.scalar = exponent_.data();
  return call_at(address_, function, arguments, csr);
}

std::vector<Callable> callables() {
  std::vector<Callable> list;
  for (const harness::Function& m : harness::all_functions())
    for (int i = 0; i < (m.shape == harness::Shape::ScalarPower ? Callable::scalars : 1); ++i) list.emplace_back(m, i);
  return list;
}

std::ostream& operator<<(std::ostream& out, const Callable& s) { return out << s.name(); }

std::uint64_t part_of(const Bytes& array, std::size_t part_size, std::size_t i) {
  std::uint64_t bits = 0;
  std::memcpy(&bits, &array[i * part_size], part_size);
  return bits;
}

Strip alone(const Callable& s, const std::vector<Element>& elements, unsigned csr) {
  const harness::Function& m = s.function;
  const std::size_t size = m.destination_size();
  Strip strip;
  strip.count = static_cast<int>(elements.size());
  strip.elements = elements;
  for (int i = 0; i < m.sources(); ++i) strip.source[i] = packed(m, i, elements);
  for (int i = 0; i < m.destinations(); ++i) strip.destination[i].resize(elements.size() * size);
  unsigned char room[2][128]; // for a vector too many, which the tests of bounds tell of
  for (int i = 0; i < strip.count; ++i) {
    const std::size_t from = i * m.source_size();
    const Ending ending =
        s.call({at(strip.source[0], from), at(strip.source[1], from), nullptr, room[0], room[1], 1}, csr);
    for (int d = 0; d < m.destinations(); ++d) std::copy_n(room[d], size, &strip.destination[d][i * size]);
    strip.status.push_back(ending.status);
    strip.flags.push_back(ending.flags());
  }
  return strip;
}

Strip pick(const Callable& s, const Strip& from, const std::vector<int>& indices, int count) {
  Strip strip;
  strip.count = count;
  const auto append = [](Bytes& to, const Bytes& of, std::size_t size, int i) {
    if (!of.empty()) to.insert(to.end(), of.begin() + i * size, of.begin() + (i + 1) * size);
  };
  for (int k = 0; k < count; ++k) {
    const int i = indices[k % indices.size()];
    strip.elements.push_back(from.elements[i]);
    for (int a = 0; a < 2; ++a) {
      append(strip.source[a], from.source[a], s.function.source_size(), i);
      append(strip.destination[a], from.destination[a], s.function.destination_size(), i);
    }
    strip.status.push_back(from.status[i]);
    strip.flags.push_back(from.flags[i]);
  }
  return strip;
}

testing::AssertionResult as_alone(const Callable& s, const Strip& strip, int from, int len, const Ending& ending,
                                  const void* dst1, const void* dst2) {
  const std::size_t size = s.function.destination_size();
  const void* results[2] = {dst1, dst2};
  for (int d = 0; d < s.function.destinations(); ++d) {
    const auto* got = static_cast<const unsigned char*>(results[d]);
    const unsigned char* expected = at(strip.destination[d], from * size);
    if (std::memcmp(got, expected, len * size) == 0) continue;
    int i = 0;
    while (std::memcmp(got + i * size, expected + i * size, size) == 0) ++i;
    return testing::AssertionFailure() << s.name() << ": element " << i << " of " << len << " (" << from
                                       << " in its strip), source" << element_text(s, strip, from + i)
                                       << ": destination " << d + 1 << " is "
                                       << hex(got + i * size, s.function.part_size(), size) << ", alone "
                                       << hex(expected + i * size, s.function.part_size(), size);
  }
  kelStatus status = kelStatusOk;
  unsigned raised_alone = 0, earned = 0;
  for (int i = from; i < from + len; ++i) {
    if (strip.status[i] != kelStatusOk) status = strip.status[i];
    raised_alone |= strip.flags[i];
    earned |= strip.flags[i] | flag_of(strip.status[i]);
  }
  if (ending.status != status)
    return testing::AssertionFailure() << s.name() << ": status " << ending.status << " of " << len << " elements from "
                                       << from << ", the last exceptional one alone gives " << status;
  if ((raised_alone & ~ending.flags()) != 0 || (ending.flags() & ~earned) != 0)
    return testing::AssertionFailure() << s.name() << ": flags" << flag_names(ending.flags()) << " of " << len
                                       << " elements from " << from << ", alone they raise" << flag_names(raised_alone)
                                       << " and earn" << flag_names(earned);
  return testing::AssertionSuccess();
}

testing::AssertionResult as_alone(const Callable& s, const Strip& strip, int from, int len, unsigned csr) {
  constexpr std::size_t margin = 128;
  constexpr unsigned char untouched = 0xA5;
  thread_local Bytes arrays[2];
  const std::size_t bytes = len * s.function.destination_size();
  for (Bytes& a : arrays) a.assign(bytes + 2 * margin, untouched);
  const std::size_t offset = from * s.function.source_size();
  const Ending ending = s.call(
      {at(strip.source[0], offset), at(strip.source[1], offset), nullptr, &arrays[0][margin], &arrays[1][margin], len},
      csr);
  for (const Bytes& a : arrays)
    if (std::any_of(a.begin(), a.begin() + margin, [](unsigned char c) { return c != untouched; }) ||
        std::any_of(a.end() - margin, a.end(), [](unsigned char c) { return c != untouched; }))
      return testing::AssertionFailure() << s.name() << ": written outside the destination of " << len << " elements";
  return as_alone(s, strip, from, len, ending, &arrays[0][margin], &arrays[1][margin]);
}

const Sample& sample_of(const Callable& s) {
  static std::mutex mutex;
  static std::map<std::string, Sample> samples;
  const std::lock_guard lock(mutex);
  const auto [place, is_new] = samples.try_emplace(s.name());
  Sample& sample = place->second;
  if (!is_new) return sample;

  std::vector<Element> elements = all_elements(s.function, 3000);
  std::shuffle(elements.begin(), elements.end(), std::minstd_rand(7));
  sample.all = alone(s, elements);
  std::vector<int> everything(elements.size()), everyday, nans, edges;
  for (int i = 0; i < sample.all.count; ++i) {
    everything[i] = i;
    const bool ordinary =
        sample.all.status[i] == kelStatusOk && sample.all.flags[i] == 0 &&
        all_parts(s, sample.all, i, [&](auto bits) { return is_finite(s.function.is_float(), bits); });
    if (ordinary) sample.ordinary.push_back(i);
    const bool is_float = s.function.is_float();
    bool moderate = true, edge = true, nan = false, signalling = false;
    for (const int place : places_of(s.function)) {
      const std::uint64_t bits = elements[i][place];
      const double magnitude = std::abs(number_of(is_float, bits));
      const bool is_moderate = magnitude >= 0.125 && magnitude <= 4;
      moderate &= is_moderate;
      edge &= is_moderate || magnitude == 0 || std::isinf(magnitude);
      nan |= is_nan(is_float, bits);
      signalling |= is_signalling(is_float, bits);
    }
    if (ordinary && moderate) everyday.push_back(i);
    if (nan && !signalling) nans.push_back(i);
    if (edge && !moderate) edges.push_back(i);
  }
  if (sample.ordinary.empty()) throw std::logic_error("no ordinary elements for " + s.name());
  sample.mixed = pick(s, sample.all, everything, 220);
  sample.plain = pick(s, sample.all, sample.ordinary, 220);
  std::vector<int> common;
  for (int i = 0; i < 2200; ++i) {
    const bool special = (i < 200 || (i >= 1000 && i < 1200) || i >= 2000) && i % 7 == 0;
    const bool edge = i < 1300 ? i >= 1100 : i % 2 == 0;
    const std::vector<int>& kind = !special ? everyday : i % 300 == 0 ? everything : edge ? edges : nans;
    common.push_back(kind.at(i / 7 % kind.size()));
  }
  sample.common = pick(s, sample.all, common, static_cast<int>(common.size()));
  return sample;
}

} // namespace driver
