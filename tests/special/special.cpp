#include "special.hpp"

#include <algorithm>
#include <cstring>
#include <sstream>

namespace special {
namespace {

using namespace driver;

Element element_of(const harness::Function& m, const std::vector<Value>& source) {
  Element e{};
  const std::size_t places =
      (m.complex_source() ? 2u : 1u) * (m.sources() == 2 || m.shape == harness::Shape::ScalarPower ? 2u : 1u);
  if (source.size() != places)
    throw std::invalid_argument(std::string(m.name) + ": a row has a wrong number of sources");
  for (std::size_t i = 0; i < places; ++i)
    e[places == 2 && !m.complex_source() ? 2 * i : i] = source[i].as_bits(m.is_float());
  return e;
}

std::vector<std::uint64_t> parts_of(const harness::Function& m, const void* dst1, const void* dst2) {
  std::vector<std::uint64_t> parts;
  for (int d = 0; d < m.destinations(); ++d)
    for (std::size_t p = 0; p < m.destination_size(); p += m.part_size()) {
      std::uint64_t bits = 0;
      std::memcpy(&bits, static_cast<const char*>(d == 0 ? dst1 : dst2) + p, m.part_size());
      parts.push_back(bits);
    }
  return parts;
}

/// An ordinary element to stand beside a row's.
Element neighbour_of(const Callable& s, const Element& row) {
  for (double x : {0.5, 1.5, 0.25, 2.25}) {
    Element e{bits_of(s.function.is_float(), x), bits_of(s.function.is_float(), x / 4),
              bits_of(s.function.is_float(), x), bits_of(s.function.is_float(), -x)};
    if (s.function.shape == harness::Shape::ScalarPower) std::copy(row.begin() + 2, row.end(), e.begin() + 2);
    const Strip strip = alone(s, {e});
    if (strip.status[0] == kelStatusOk && strip.flags[0] == 0) return e;
  }
  throw std::logic_error("no ordinary element for " + s.name());
}

} // namespace

void check_row(const harness::Function& m, const Row& row) {
  const Element element = element_of(m, row.source);
  const Callable s(m, element);
  const Strip strip = alone(s, {element, neighbour_of(s, element)});
  const auto at = [](const Bytes& b) { return b.empty() ? nullptr : b.data(); };
  std::string name(m.name);
  for (const Value& v : row.source) name += " " + v.text(m.is_float());
  const std::vector<std::uint64_t> parts = parts_of(m, at(strip.destination[0]), at(strip.destination[1]));
  ASSERT_EQ(parts.size(), row.result.size()) << name << ": the row has a wrong number of results";
  for (std::size_t i = 0; i < parts.size(); ++i)
    EXPECT_TRUE(row.result[i].matches(m.is_float(), parts[i]))
        << name << " is " << bits(parts[i]).text(m.is_float()) << " in part " << i << ", should be "
        << row.result[i].text(m.is_float());
  EXPECT_EQ(strip.status[0], row.status) << name;
  const unsigned flags = row.flags == as_status ? flag_of(row.status) : row.flags;
  EXPECT_EQ(strip.flags[0], flags) << name << ": raised" << flag_names(strip.flags[0]) << ", should raise"
                                   << flag_names(flags);

  constexpr int len = 79;
  for (int place : {0, 5, 40, len - 1}) {
    std::vector<int> order(len, 1);
    order[place] = 0;
    const Strip array = pick(s, strip, order, len);
    EXPECT_TRUE(as_alone(s, array, 0, len)) << name;
    if (m.source_size() != m.destination_size()) continue;
    Bytes in_place = array.source[0], other(in_place.size());
    const Ending ending = s.call({in_place.data(), at(array.source[1]), nullptr, in_place.data(), other.data(), len});
    EXPECT_TRUE(as_alone(s, array, 0, len, ending, in_place.data(), other.data())) << name << " in place";
  }
}

std::uint64_t Value::as_bits(bool is_float) const {
  switch (kind_) {
  case number:
    if (is_float && !(x_ == static_cast<double>(static_cast<float>(x_))) && x_ == x_)
      throw std::invalid_argument("a row's number is no float");
    return bits_of(is_float, x_);
  case pattern:
    return bits_;
  case quiet_nan:
    return is_float ? 0x7FC00000u : 0x7FF8000000000000u;
  case processor_nan:
    return is_float ? 0xFFC00000u : 0xFFF8000000000000u;
  }
  return 0;
}

bool Value::matches(bool is_float, std::uint64_t result) const {
  if (kind_ == quiet_nan) return is_nan(is_float, result) && !is_signalling(is_float, result);
  return result == as_bits(is_float);
}

std::string Value::text(bool is_float) const {
  std::ostringstream out;
  if (kind_ == number)
    out << std::hexfloat << x_;
  else if (kind_ == quiet_nan)
    out << "a quiet NaN";
  else
    out << "0x" << std::hex << as_bits(is_float);
  return out.str();
}

Answer ask(const harness::Function& m, const std::vector<Value>& source, unsigned csr) {
  const Element element = element_of(m, source);
  const Callable s(m, element);
  const Bytes x = packed(m, 0, {element}), y = packed(m, 1, {element});
  std::uint64_t dst1[2] = {}, dst2[2] = {};
  const Ending ending = s.call({x.data(), y.data(), nullptr, dst1, dst2, 1}, csr);
  return {parts_of(m, dst1, dst2), ending};
}

} // namespace special
