// Compiled once for each letter of the vector function ABI.
#include "caller.hpp"

#include "simd/vector_abi.hpp"

#include <cstring>
#include <type_traits>

namespace {

using harness::Arguments, harness::Function;

template <class V> V load(const void* from) {
  V v;
  std::memcpy(&v, from, sizeof v);
  return v;
}

template <class V, class T> void call_as(void* function, const Function& of, const Arguments& a) {
  V result;
  switch (of.shape) {
  case harness::Shape::Binary:
    result = reinterpret_cast<V (*)(V, V)>(function)(load<V>(a.src1), load<V>(a.src2));
    break;
  case harness::Shape::TwoOutputs:
    return reinterpret_cast<void (*)(V, T*, T*)>(function)(load<V>(a.src1), static_cast<T*>(a.dst1),
                                                           static_cast<T*>(a.dst2));
  default:
    result = reinterpret_cast<V (*)(V)>(function)(load<V>(a.src1));
  }
  std::memcpy(a.dst1, &result, sizeof result);
}

template <class V, class M, class T>
void call_masked_as(void* function, const Function& of, const Arguments& a, unsigned bits) {
  M mask;
  if constexpr (std::is_same_v<M, unsigned>) {
    mask = bits;
  } else {
    unsigned char lanes[sizeof mask];
    for (std::size_t i = 0; i < sizeof mask; ++i) lanes[i] = (bits >> i / sizeof(T) & 1) != 0 ? 0xFF : 0;
    std::memcpy(&mask, lanes, sizeof mask);
  }
  const V result = of.shape == harness::Shape::Binary
                       ? reinterpret_cast<V (*)(V, V, M)>(function)(load<V>(a.src1), load<V>(a.src2), mask)
                       : reinterpret_cast<V (*)(V, M)>(function)(load<V>(a.src1), mask);
  std::memcpy(a.dst1, &result, sizeof result);
}

template <class V, class T, int N> void call_scattered_as(void* function, const Arguments& a) {
  constexpr int lanes = sizeof(V) / sizeof(T);
  T* pointers[2][lanes];
  for (int i = 0; i < lanes; ++i) {
    pointers[0][i] = static_cast<T*>(a.dst1) + lanes - 1 - i;
    pointers[1][i] = static_cast<T*>(a.dst2) + lanes - 1 - i;
  }
  Integers to[2 * N];
  static_assert(sizeof to == sizeof pointers);
  std::memcpy(to, pointers, sizeof to);
  const V x = load<V>(a.src1);
  if constexpr (N == 1)
    reinterpret_cast<void (*)(V, Integers, Integers)>(function)(x, to[0], to[1]);
  else if constexpr (N == 2)
    reinterpret_cast<void (*)(V, Integers, Integers, Integers, Integers)>(function)(x, to[0], to[1], to[2], to[3]);
  else
    reinterpret_cast<void (*)(V, Integers, Integers, Integers, Integers, Integers, Integers, Integers, Integers)>(
        function)(x, to[0], to[1], to[2], to[3], to[4], to[5], to[6], to[7]);
}

void call_plainly(void* function, const Function& of, const Arguments& a) {
  of.is_float() ? call_as<Vector_32f, float>(function, of, a) : call_as<Vector_64f, double>(function, of, a);
}
void call_masked(void* function, const Function& of, const Arguments& a, unsigned mask) {
  of.is_float() ? call_masked_as<Vector_32f, Mask_32f, float>(function, of, a, mask)
                : call_masked_as<Vector_64f, Mask_64f, double>(function, of, a, mask);
}
void call_scattered(void* function, const Function& of, const Arguments& a) {
  of.is_float() ? call_scattered_as<Vector_32f, float, KELVM_ABI_POINTERS_32f>(function, a)
                : call_scattered_as<Vector_64f, double, KELVM_ABI_POINTERS_64f>(function, a);
}

} // namespace

#define CALLER(letter) CALLER_AS_IS(letter)
#define CALLER_AS_IS(letter)                                                                                           \
  extern constinit const Caller caller_##letter = {#letter[0],   KELVM_ABI_LANES_64f, KELVM_ABI_LANES_32f,             \
                                                   call_plainly, call_masked,         call_scattered};
CALLER(KELVM_ABI_LETTER)
