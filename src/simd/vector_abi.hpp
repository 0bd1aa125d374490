// The x86-64 vector function ABI of GNU/Linux for the instruction set that a file is compiled for: the letter and the
// numbers of lanes in names like _ZGVdN4v_exp, the types of arguments, and the build whose kernels compute it. For AVX
// alone that is the one of half as long registers.
//
// Apart from simd/isa.hpp, whose sets are three: inline functions of a fourth may not meet theirs by one name.
#pragma once

#include <immintrin.h>

#if defined(__AVX512F__)
#  define KELVM_ABI_LETTER e
#  define KELVM_ABI_KERNELS avx512
#  define KELVM_ABI_LANES_64f 8
#  define KELVM_ABI_LANES_32f 16
#  define KELVM_ABI_POINTERS_64f 1
#  define KELVM_ABI_POINTERS_32f 2
#elif defined(__AVX2__)
#  define KELVM_ABI_LETTER d
#  define KELVM_ABI_KERNELS avx2
#  define KELVM_ABI_LANES_64f 4
#  define KELVM_ABI_LANES_32f 8
#  define KELVM_ABI_POINTERS_64f 1
#  define KELVM_ABI_POINTERS_32f 2
#elif defined(__AVX__)
#  define KELVM_ABI_LETTER c
#  define KELVM_ABI_KERNELS sse41
#  define KELVM_ABI_LANES_64f 4
#  define KELVM_ABI_LANES_32f 8
#  define KELVM_ABI_POINTERS_64f 2
#  define KELVM_ABI_POINTERS_32f 4
#else
#  define KELVM_ABI_LETTER b
#  define KELVM_ABI_KERNELS sse41
#  define KELVM_ABI_LANES_64f 2
#  define KELVM_ABI_LANES_32f 4
#  define KELVM_ABI_POINTERS_64f 1
#  define KELVM_ABI_POINTERS_32f 2
#endif

namespace {

using Lane_64f = double;
using Lane_32f = float;

#if defined(__AVX512F__)
using Vector_64f = __m512d;
using Vector_32f = __m512;
using Integers = __m512i;
using Mask_64f = unsigned;
using Mask_32f = unsigned;
#elif defined(__AVX__)
using Vector_64f = __m256d;
using Vector_32f = __m256;
using Mask_64f = __m256d;
using Mask_32f = __m256;
#  if defined(__AVX2__)
using Integers = __m256i;
#  else
using Integers = __m128i;
#  endif
#else
using Vector_64f = __m128d;
using Vector_32f = __m128;
using Integers = __m128i;
using Mask_64f = __m128d;
using Mask_32f = __m128;
#endif

#if defined(__AVX__) && !defined(__AVX2__)
using KernelVector_64f = __m128d;
using KernelVector_32f = __m128;
using KernelMask_64f = __m128d;
using KernelMask_32f = __m128;

inline __m128d low(__m256d x) { return _mm256_castpd256_pd128(x); }
inline __m128 low(__m256 x) { return _mm256_castps256_ps128(x); }
inline __m128d high(__m256d x) { return _mm256_extractf128_pd(x, 1); }
inline __m128 high(__m256 x) { return _mm256_extractf128_ps(x, 1); }
inline __m256d joined(__m128d low, __m128d high) { return _mm256_set_m128d(high, low); }
inline __m256 joined(__m128 low, __m128 high) { return _mm256_set_m128(high, low); }

template <class Kernel, class... X> inline auto call(Kernel kernel, X... x) {
  const auto first = kernel(low(x)...);
  return joined(first, kernel(high(x)...));
}
template <class Kernel, class X, class T> inline void call_two(Kernel kernel, X x, T* first, T* second) {
  kernel(low(x), first, second);
  kernel(high(x), first + 16 / sizeof(T), second + 16 / sizeof(T));
}
#else
using KernelVector_64f = Vector_64f;
using KernelVector_32f = Vector_32f;
using KernelMask_64f = Mask_64f;
using KernelMask_32f = Mask_32f;

template <class Kernel, class... X> inline auto call(Kernel kernel, X... x) { return kernel(x...); }
template <class Kernel, class X, class T> inline void call_two(Kernel kernel, X x, T* first, T* second) {
  kernel(x, first, second);
}
#endif

} // namespace
