// The processor's estimates of reciprocals and reciprocal square roots. Their bits are the processor's own, the same
// for one lane as for many. They raise no flag.
#pragma once

#include "simd/arithmetic.hpp"
#include "simd/memory.hpp"

namespace kelvm::inline KELVM_BUILD {

/// Whether lanes of type T have estimates: floats always, doubles in the AVX-512 build.
template <class T> inline constexpr bool has_estimates = sizeof(T) == 4 || vector_bytes == 64;
/// Whether the estimate of a subnormal argument is as good as any; if not, a subnormal counts as a zero, and an
/// estimate below the normal range is one.
inline constexpr bool estimates_know_subnormals = vector_bytes == 64;

// The two functions differ in the instruction's name.
#if KELVM_AVX512
#  define KELVM_ESTIMATE(instruction)                                                                                  \
    if constexpr (std::is_same_v<V, float>)                                                                            \
      return _mm_cvtss_f32(_mm_##instruction##14_ss(_mm_set_ss(v), _mm_set_ss(v)));                                    \
    else if constexpr (std::is_same_v<V, double>)                                                                      \
      return _mm_cvtsd_f64(_mm_##instruction##14_sd(_mm_set_sd(v), _mm_set_sd(v)));                                    \
    else if constexpr (sizeof(Lane<V>) == 4)                                                                           \
      return (V)_mm512_maskz_##instruction##14_ps(__mmask16(-1), (__m512)v);                                           \
    else                                                                                                               \
      return (V)_mm512_maskz_##instruction##14_pd(__mmask8(-1), (__m512d)v);
#else
#  if KELVM_AVX2
#    define KELVM_ESTIMATE_OF_VECTOR(instruction) (V) _mm256_##instruction##_ps((__m256)v)
#  else
#    define KELVM_ESTIMATE_OF_VECTOR(instruction) (V) _mm_##instruction##_ps((__m128)v)
#  endif
#  define KELVM_ESTIMATE(instruction)                                                                                  \
    if constexpr (lanes<V> == 1)                                                                                       \
      return _mm_cvtss_f32(_mm_##instruction##_ss(_mm_set_ss(v)));                                                     \
    else                                                                                                               \
      return KELVM_ESTIMATE_OF_VECTOR(instruction);
#endif

/// About 1 / v: relative error at most 2^-14 in the AVX-512 build, 1.5 2^-12 in the others, as makers guarantee. A zero
/// gives an infinity and the other way round, with the sign.
template <class V> inline V reciprocal_estimate(V v) {
  static_assert(has_estimates<Lane<V>> && (lanes<V> == 1 || sizeof v == vector_bytes));
  KELVM_ESTIMATE(rcp)
}

/// About 1 / sqrt(v) for v >= 0, likewise. A zero gives an infinity and the other way round.
template <class V> inline V inverse_sqrt_estimate(V v) {
  static_assert(has_estimates<Lane<V>> && (lanes<V> == 1 || sizeof v == vector_bytes));
  KELVM_ESTIMATE(rsqrt)
}

#undef KELVM_ESTIMATE
#undef KELVM_ESTIMATE_OF_VECTOR

/// v / 2 for a positive v with both normal, and for +0: by integers, as multipliers are the bottleneck of Newton's
/// steps.
template <class V> inline V halved(V v) {
  if constexpr (lanes<V> == 1) {
    return Lane<V>(0.5) * v;
  } else {
    // Of the 16-bit words the highest of a lane has the exponent. A zero stays: the subtraction saturates.
    static_assert(sizeof v == vector_bytes);
    const auto one = splat<Bits<V>>(Lane<Bits<V>>(1) << (sizeof(Lane<V>) == 8 ? 52 : 23));
#if KELVM_AVX512
    return (V)_mm512_maskz_subs_epu16(__mmask32(-1), (__m512i)v, (__m512i)one);
#elif KELVM_AVX2
    return (V)_mm256_subs_epu16((__m256i)v, (__m256i)one);
#else
    return (V)_mm_subs_epu16((__m128i)v, (__m128i)one);
#endif
  }
}

} // namespace kelvm::inline KELVM_BUILD
