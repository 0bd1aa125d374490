// SPDX-License-Identifier: MIT
// Functions of registers, for code written with intrinsics: kelvm::simd::exp(x) for an x of type __m128d, __m256d,
// __m512d, __m128, __m256 or __m512, as far as the code is compiled for the set. In the libraries kelvm_simd and, less
// accurate and faster, kelvm_simd_fast; the linker's choice. For C++11 and later.
//
// What they compute and promise is that of kelvm/loops.h. The vector types of other libraries hold such a register;
// docs/vectorised-loops.md has an example with xsimd, Highway and std::experimental::simd.
#ifndef KELVM_SIMD_HPP
#define KELVM_SIMD_HPP

#include <immintrin.h>

// The functions have the names of the x86-64 vector function ABI.
#define KELVM_SIMD_UNARY_OF(function, letter, doubles, lanes, floats, more_lanes)                                      \
  doubles function(doubles x) __asm__("_ZGV" #letter "N" #lanes "v_kelvm_" #function);                                 \
  floats function(floats x) __asm__("_ZGV" #letter "N" #more_lanes "v_kelvm_" #function "f");
#define KELVM_SIMD_BINARY_OF(function, letter, doubles, lanes, floats, more_lanes)                                     \
  doubles function(doubles x, doubles y) __asm__("_ZGV" #letter "N" #lanes "vv_kelvm_" #function);                     \
  floats function(floats x, floats y) __asm__("_ZGV" #letter "N" #more_lanes "vv_kelvm_" #function "f");
#define KELVM_SIMD_TWO_RESULTS_OF(function, letter, doubles, lanes, floats, more_lanes)                                \
  void function(doubles x, doubles* first,                                                                             \
                doubles* second) __asm__("_ZGV" #letter "N" #lanes "vl8l8_kelvm_" #function);                          \
  void function(floats x, floats* first,                                                                               \
                floats* second) __asm__("_ZGV" #letter "N" #more_lanes "vl4l4_kelvm_" #function "f");

#define KELVM_SIMD_SSE(shape, function) KELVM_SIMD_##shape##_OF(function, b, __m128d, 2, __m128, 4)
#if defined(__AVX2__)
#  define KELVM_SIMD_AVX(shape, function) KELVM_SIMD_##shape##_OF(function, d, __m256d, 4, __m256, 8)
#elif defined(__AVX__)
#  define KELVM_SIMD_AVX(shape, function) KELVM_SIMD_##shape##_OF(function, c, __m256d, 4, __m256, 8)
#else
#  define KELVM_SIMD_AVX(shape, function)
#endif
#if defined(__AVX512F__)
#  define KELVM_SIMD_AVX512(shape, function) KELVM_SIMD_##shape##_OF(function, e, __m512d, 8, __m512, 16)
#else
#  define KELVM_SIMD_AVX512(shape, function)
#endif
#define KELVM_SIMD(shape, function)                                                                                    \
  KELVM_SIMD_SSE(shape, function) KELVM_SIMD_AVX(shape, function) KELVM_SIMD_AVX512(shape, function)

namespace kelvm {
namespace simd {

// Exponentials and logarithms.
KELVM_SIMD(UNARY, exp)
KELVM_SIMD(UNARY, expm1)
KELVM_SIMD(UNARY, log)
KELVM_SIMD(UNARY, log10)
KELVM_SIMD(UNARY, log1p)
// Circular functions of radians.
KELVM_SIMD(UNARY, sin)
KELVM_SIMD(UNARY, cos)
KELVM_SIMD(UNARY, tan)
// Their inverses.
KELVM_SIMD(UNARY, asin)
KELVM_SIMD(UNARY, acos)
KELVM_SIMD(UNARY, atan)
// Hyperbolic functions and their inverses.
KELVM_SIMD(UNARY, sinh)
KELVM_SIMD(UNARY, cosh)
KELVM_SIMD(UNARY, tanh)
KELVM_SIMD(UNARY, asinh)
KELVM_SIMD(UNARY, acosh)
KELVM_SIMD(UNARY, atanh)
// x^(1/3), x^(-1/3), x^(-1/2), x^(2/3), x^(3/2).
KELVM_SIMD(UNARY, cbrt)
KELVM_SIMD(UNARY, rcbrt)
KELVM_SIMD(UNARY, rsqrt)
KELVM_SIMD(UNARY, pow2o3)
KELVM_SIMD(UNARY, pow3o2)
// The error function, its complement, the normal distribution function, and their inverses.
KELVM_SIMD(UNARY, erf)
KELVM_SIMD(UNARY, erfc)
KELVM_SIMD(UNARY, erf_inv)
KELVM_SIMD(UNARY, erfc_inv)
KELVM_SIMD(UNARY, cdf_norm)
KELVM_SIMD(UNARY, cdf_norm_inv)
// x^y; the angle of the point (y, x), ordinate first; the square root of x^2 + y^2.
KELVM_SIMD(BINARY, pow)
KELVM_SIMD(BINARY, atan2)
KELVM_SIMD(BINARY, hypot)
// The sine to *first, the cosine to *second.
KELVM_SIMD(TWO_RESULTS, sincos)

} // namespace simd
} // namespace kelvm

#undef KELVM_SIMD
#undef KELVM_SIMD_SSE
#undef KELVM_SIMD_AVX
#undef KELVM_SIMD_AVX512
#undef KELVM_SIMD_UNARY_OF
#undef KELVM_SIMD_BINARY_OF
#undef KELVM_SIMD_TWO_RESULTS_OF

#endif
