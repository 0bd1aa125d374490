#include "elements.hpp"

#include "inputs.hpp"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>

namespace driver {
namespace {

// A spread of magnitudes. Numbers that mean something to one family alone are its points (accuracy/inputs.cpp).
// clang-format off
const std::vector<double> spread = {
    0x1p-252, 0x1p-149, 0x1p-126, 0x1p-100, 0x1p-60, 0x1p-54, 0x1p-28, 0x1p-25, 0x1p-13, 0x1p-12, 1e-3, 0.0625, 0.1,
    0.25, 0.375, 0.5, 0.75, 0.97, 1, 1.25, 1.5, 1.75, 2, 2.5, 3, 3.1415926535897931, 4, 5.5, 6.5, 8, 10, 13.5, 16, 22,
    27.25, 32, 38.5, 64, 87, 87.25, 88.75, 100, 160, 256, 600, 630, 650, 665, 690, 700, 708, 709.5, 710.5, 745.25, 1000,
    4000, 10000, 65535.5, 0x1p17, 0x1p23 - 0.5, 0x1p23, 0x1p24, 0x1p31, 0x1p32, 1e10, 0x1p52 - 0.5, 0x1p52, 0x1p53,
    0x1p63, 0x1p64, 1e22, 1e30, 0x1p100, 0x1p126, 0x1p127, 0x1p500, 0x1p1000, 0x1p1023};
// clang-format on
// Those that go into all pairs.
const std::vector<double> few = {0, 0x1p-60, 0.5, 1, 1.5, 2, 3, 10, 100, 710, 1e5, 0x1p53, 0x1p126};

struct Encoding {
  std::uint64_t sign, infinity, quiet; // their bits; those below `quiet` are a NaN's payload
};
constexpr Encoding encoding(bool is_float) {
  return is_float ? Encoding{0x80000000, 0x7F800000, 0x00400000}
                  : Encoding{0x8000000000000000, 0x7FF0000000000000, 0x0008000000000000};
}

/// Numbers of either sign with their neighbours, the ends of the range, infinities and NaNs, as bits.
std::vector<std::uint64_t> with_ends(bool is_float, const std::vector<double>& numbers, bool neighbours) {
  const Encoding f = encoding(is_float);
  const std::uint64_t smallest_normal = f.quiet << 1, largest = f.infinity - 1;
  std::vector<std::uint64_t> list = {0, 1, smallest_normal, largest, f.infinity, f.infinity | f.quiet, f.infinity | 1};
  if (neighbours)
    for (std::uint64_t b :
         {smallest_normal - 1, smallest_normal + 1, f.quiet, largest - 1, f.infinity | f.quiet | 0x1234,
          f.infinity | f.quiet >> 1, f.infinity | f.quiet >> 2 | 0x77, f.sign - 1})
      list.push_back(b);
  for (double x : numbers) {
    const std::uint64_t b = bits_of(is_float, std::abs(x));
    list.push_back(b);
    if (neighbours && b > 1 && b < f.infinity) list.insert(list.end(), {b - 1, b + 1});
  }
  std::sort(list.begin(), list.end());
  list.erase(std::unique(list.begin(), list.end()), list.end());
  for (std::size_t i = 0, n = list.size(); i < n; ++i) list.push_back(list[i] | f.sign);
  return list;
}

} // namespace

std::uint64_t bits_of(bool is_float, double x) {
  return is_float ? std::bit_cast<std::uint32_t>(static_cast<float>(x)) : std::bit_cast<std::uint64_t>(x);
}
double rounded(bool is_float, double x) { return is_float ? static_cast<double>(static_cast<float>(x)) : x; }
double number_of(bool is_float, std::uint64_t bits) {
  return is_float ? std::bit_cast<float>(static_cast<std::uint32_t>(bits)) : std::bit_cast<double>(bits);
}
bool is_finite(bool is_float, std::uint64_t bits) {
  return (bits & encoding(is_float).infinity) != encoding(is_float).infinity;
}
bool is_nan(bool is_float, std::uint64_t bits) {
  return (bits & ~encoding(is_float).sign) > encoding(is_float).infinity;
}
bool is_signalling(bool is_float, std::uint64_t bits) {
  return is_nan(is_float, bits) && (bits & encoding(is_float).quiet) == 0;
}
bool is_tiny(bool is_float, std::uint64_t bits) {
  const Encoding f = encoding(is_float);
  return (bits & ~f.sign) <= (f.quiet << 1) + (f.quiet >> 9);
}

std::vector<int> places_of(const harness::Function& function) {
  const bool pairs = function.complex_source(), two = function.sources() == 2;
  return pairs ? (two ? std::vector{0, 1, 2, 3} : std::vector{0, 1}) : (two ? std::vector{0, 2} : std::vector{0});
}

std::vector<Element> special_elements(const harness::Function& function) {
  const std::vector<std::uint64_t> some = with_ends(function.is_float(), few, false);
  const std::vector<int> places = places_of(function);
  const accuracy::Inputs inputs(function, {}, {});
  std::vector<std::uint64_t> many[4];
  for (int place : places) {
    std::vector<double> numbers = spread;
    numbers.insert(numbers.end(), inputs.points(place).begin(), inputs.points(place).end());
    many[place] = with_ends(function.is_float(), numbers, true);
  }
  std::vector<Element> elements;
  if (places.size() == 1) {
    for (std::uint64_t b : many[0]) elements.push_back({b});
    return elements;
  }
  if (places.size() == 2)
    for (std::uint64_t a : some)
      for (std::uint64_t b : some) {
        Element e{};
        e[places[0]] = a;
        e[places[1]] = b;
        elements.push_back(e);
      }
  accuracy::Random random{17};
  for (int i = 0; i < 1000; ++i) {
    const bool from_many = random.one_in(2);
    Element e{};
    for (int place : places) {
      const auto& list = from_many ? many[place] : some;
      e[place] = list[random.below(list.size())];
    }
    if (places.size() == 4 && random.one_in(4)) e[2] = e[0];
    if (places.size() == 4 && random.one_in(4)) e[3] = e[1];
    elements.push_back(e);
  }
  return elements;
}

std::vector<Element> domain_elements(const harness::Function& function, int count) {
  accuracy::Random random{29};
  std::vector<reference::Arguments> arguments(count);
  const accuracy::Inputs inputs(function, {}, {});
  inputs.fill(random, inputs.steps(), arguments);
  std::vector<Element> elements(count, Element{});
  for (int i = 0; i < count; ++i)
    for (int place = 0; place < 4; ++place)
      elements[i][place] = bits_of(function.is_float(), arguments[i].parts[place]);
  return elements;
}

std::vector<Element> all_elements(const harness::Function& function, int of_the_domain) {
  std::vector<Element> elements = special_elements(function);
  for (const Element& e : domain_elements(function, of_the_domain)) elements.push_back(e);
  return elements;
}

std::vector<Element> random_elements(const harness::Function& function, int count) {
  accuracy::Random random{43};
  std::vector<Element> elements(count, Element{});
  for (Element& e : elements)
    for (std::uint64_t& part : e) part = function.is_float() ? random.next() >> 32 : random.next();
  return elements;
}

Bytes packed(const harness::Function& function, int source, const std::vector<Element>& elements) {
  const std::size_t part = function.part_size(), size = function.source_size();
  Bytes bytes(elements.size() * size);
  for (std::size_t i = 0; i < elements.size(); ++i)
    for (std::size_t p = 0; p < size / part; ++p)
      std::memcpy(&bytes[i * size + p * part], &elements[i][2 * source + p], part); // little-endian
  return bytes;
}

} // namespace driver
