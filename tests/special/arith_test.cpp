// Real arithmetic: one IEEE operation an element, in the caller's mode, with the NaN of the first source that has one.
#include "driver.hpp"

#include <bit>
#include <cstring>
#include <immintrin.h>

namespace {

using namespace driver;

template <class T> using Bits = std::conditional_t<sizeof(T) == 4, std::uint32_t, std::uint64_t>;

template <class T> T operation(std::string_view family, T a, T b) {
  volatile T x = a, y = b; // made at run time, in the mode of the moment
  if (family == "Add") return x + y;
  if (family == "Sub") return x - y;
  return x * y;
}

template <class T> void follows_ieee(const harness::Function& m) {
  const Callable s(m);
  const bool binary = m.sources() == 2;
  std::vector<Element> elements = all_elements(m, 2000);
  for (const Element& e : random_elements(m, 2000)) elements.push_back(e);
  const int count = static_cast<int>(elements.size());
  const Bytes x = packed(m, 0, elements), y = packed(m, 1, elements);
  Bytes got(count * sizeof(T)), expected(count * sizeof(T));
  for (int way = 0; way < 16; ++way) {
    const unsigned mode = roundings[way % 4] | flushings[way / 4];
    const Ending ending = s.call({x.data(), y.data(), nullptr, got.data(), nullptr, count}, default_csr | mode);
    ASSERT_EQ(ending.status, kelStatusOk);
    const unsigned found = _mm_getcsr();
    _mm_setcsr(default_csr | mode);
    for (int i = 0; i < count; ++i) {
      const auto a_bits = static_cast<Bits<T>>(elements[i][0]),
                 b_bits = static_cast<Bits<T>>(elements[i][binary ? 2 : 0]);
      const T a = std::bit_cast<T>(a_bits), b = std::bit_cast<T>(b_bits);
      constexpr Bits<T> quiet = Bits<T>(1) << (sizeof(T) == 4 ? 22 : 51), sign = Bits<T>(1) << (8 * sizeof(T) - 1);
      Bits<T> result;
      if (is_nan(m.is_float(), a_bits))
        result = a_bits | quiet;
      else if (is_nan(m.is_float(), b_bits))
        result = b_bits | quiet;
      else if (m.family == "Abs")
        result = std::bit_cast<Bits<T>>(operation<T>("Mul", a, a_bits & sign ? T(-1) : T(1)));
      else
        result = std::bit_cast<Bits<T>>(operation<T>(m.family, a, b));
      std::memcpy(&expected[i * sizeof(T)], &result, sizeof(T));
    }
    const unsigned flags = _mm_getcsr() & honest_flags;
    _mm_setcsr(found);
    for (int i = 0; i < count; ++i)
      ASSERT_EQ(part_of(got, sizeof(T), i), part_of(expected, sizeof(T), i))
          << m.name << " of 0x" << std::hex << elements[i][0] << " 0x" << elements[i][2] << ", mode 0x" << mode;
    ASSERT_EQ(ending.flags() & ~invalid, flags & ~invalid) << m.name; // invalid also comes from signalling NaNs
  }
}

TEST(Arithmetic, IsTheIeeeOperationInTheCallersMode) {
  for (const char* family : {"Add", "Sub", "Mul", "Sqr", "Abs"}) {
    follows_ieee<float>(*harness::find_function(std::string("kels") + family + "_32f_A24"));
    follows_ieee<double>(*harness::find_function(std::string("kels") + family + "_64f_A53"));
  }
}

} // namespace
