// Complex sums and conjugates, part by part: one operation a part for Add and Sub, one bit for Conj. Products stand in
// complex/products.cpp, quotients in complex/quotients.cpp.
#include "frame/export.hpp"
#include "kelvm/complex.h"
#include "simd/ordered.hpp"

namespace kelvm::inline KELVM_BUILD::complex_arithmetic {
namespace {

template <class T> struct PartByPart : KernelDefaults {
  using Element = T;
  static constexpr bool covers_everything = true;
  static constexpr int parts_by_themselves = 2;
  static constexpr Magnitudes ordinary{0x1p-60, 0x1p60};
};
template <class T> struct Add : PartByPart<T> {
  template <class V> static V formula(V x, V y) { return ordered_sum(x, y); }
};
template <class T> struct Sub : PartByPart<T> {
  template <class V> static V formula(V x, V y) { return x - y; }
};
template <class T> struct Conj : PartByPart<T> {
  static constexpr Mode mode = Mode::callers; // which has no part in it
  template <class V> static V formula(V x) {
    const auto sign_of_imaginary_parts = []<int... I>(std::integer_sequence<int, I...>) {
      return Bits<V>{(I % 2 == 1 ? sign_bit<V> : 0)...};
    }
    (std::make_integer_sequence<int, lanes<V>>{});
    return from_bits<V>(bits(x) ^ sign_of_imaginary_parts);
  }
};

} // namespace

KELVM_BINARY(kelsAdd_32fc_A24, Add<float>)
KELVM_BINARY(kelsAdd_64fc_A53, Add<double>)
KELVM_BINARY(kelsSub_32fc_A24, Sub<float>)
KELVM_BINARY(kelsSub_64fc_A53, Sub<double>)
KELVM_UNARY(kelsConj_32fc_A24, Conj<float>)
KELVM_UNARY(kelsConj_64fc_A53, Conj<double>)

} // namespace kelvm::inline KELVM_BUILD::complex_arithmetic
