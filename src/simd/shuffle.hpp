// Lanes rearranged; floats as doubles and back.
#pragma once

#include "simd/types.hpp"

namespace kelvm::inline KELVM_BUILD {

/// Two vectors of interleaved pairs taken apart into first and second ones, and put together again.
template <class V> inline Pair<V> deinterleave(V low, V high) {
  return [=]<int... I>(std::integer_sequence<int, I...>) {
    return Pair<V>{__builtin_shufflevector(low, high, (2 * I)...), __builtin_shufflevector(low, high, (2 * I + 1)...)};
  }
  (std::make_integer_sequence<int, lanes<V>>{});
}
template <class V> inline Pair<V> interleave(Pair<V> parts) {
  constexpr int n = lanes<V>;
  return [=]<int... I>(std::integer_sequence<int, I...>) {
    return Pair<V>{__builtin_shufflevector(parts.first, parts.second, (I / 2 + I % 2 * n)...),
                   __builtin_shufflevector(parts.first, parts.second, (n / 2 + I / 2 + I % 2 * n)...)};
  }
  (std::make_integer_sequence<int, n>{});
}

/// The same within each 128 bits, where shuffles are cheap: unzip(low, high) has the pairs in an order of its own, and
/// zip() undoes it.
template <class V> inline Pair<V> unzip(V low, V high) {
  return [=]<int... I>(std::integer_sequence<int, I...>) {
    constexpr int n = lanes<V>, per = 16 / int(sizeof(Lane<V>));
    return Pair<V>{
        __builtin_shufflevector(low, high, (I / per * per + I % per / (per / 2) * n + I % (per / 2) * 2)...),
        __builtin_shufflevector(low, high, (I / per * per + I % per / (per / 2) * n + I % (per / 2) * 2 + 1)...)};
  }
  (std::make_integer_sequence<int, lanes<V>>{});
}
template <class V> inline Pair<V> zip(Pair<V> parts) {
  return [=]<int... I>(std::integer_sequence<int, I...>) {
    constexpr int n = lanes<V>, per = 16 / int(sizeof(Lane<V>));
    return Pair<V>{
        __builtin_shufflevector(parts.first, parts.second, (I / per * per + I % per / 2 + I % 2 * n)...),
        __builtin_shufflevector(parts.first, parts.second, (I / per * per + per / 2 + I % per / 2 + I % 2 * n)...)};
  }
  (std::make_integer_sequence<int, lanes<V>>{});
}

/// Half 0 or 1 of a vector. (The compiler's own shuffles take more instructions here and in join.)
template <int Half, class V> inline HalfOf<V> half(V v) {
#if KELVM_AVX512
  if constexpr (sizeof(V) == 64) return (HalfOf<V>)_mm512_maskz_extractf64x4_pd(0xFF, (__m512d)v, Half);
#endif
#if KELVM_AVX512 || KELVM_AVX2
  if constexpr (sizeof(V) == 32) return (HalfOf<V>)_mm256_extractf128_pd((__m256d)v, Half);
#endif
  return [v]<int... I>(std::integer_sequence<int, I...>) {
    return __builtin_shufflevector(v, v, (Half * (lanes<V> / 2) + I)...);
  }
  (std::make_integer_sequence<int, lanes<V> / 2>{});
}
/// Two halves put together.
template <class H> inline TwiceOf<H> join(H low, H high) {
#if KELVM_AVX512
  if constexpr (sizeof(H) == 32)
    return (TwiceOf<H>)_mm512_maskz_insertf64x4(0xFF, _mm512_castpd256_pd512((__m256d)low), (__m256d)high, 1);
#endif
#if KELVM_AVX512 || KELVM_AVX2
  if constexpr (sizeof(H) == 16)
    return (TwiceOf<H>)_mm256_insertf128_pd(_mm256_castpd128_pd256((__m128d)low), (__m128d)high, 1);
#endif
  return [ low, high ]<int... I>(std::integer_sequence<int, I...>) { return __builtin_shufflevector(low, high, I...); }
  (std::make_integer_sequence<int, 2 * lanes<H>>{});
}

/// Half 0 or 1 of a native float vector widened to a native double vector.
template <int Half> inline Native<double> widen(Native<float> v) {
#if KELVM_AVX512
  return (Native<double>)_mm512_maskz_cvtps_pd(0xFF, (__m256)half<Half>(v));
#elif KELVM_AVX2
  return (Native<double>)_mm256_cvtps_pd((__m128)half<Half>(v));
#else
  return (Native<double>)_mm_cvtps_pd(Half ? _mm_movehl_ps((__m128)v, (__m128)v) : (__m128)v);
#endif
}
/// The same for the integers of float lanes.
template <int Half> inline Native<double> widen(Int<Native<float>> v) {
#if KELVM_AVX512
  return (Native<double>)_mm512_maskz_cvtepi32_pd(0xFF, (__m256i)half<Half>(v));
#elif KELVM_AVX2
  return (Native<double>)_mm256_cvtepi32_pd((__m128i)half<Half>(v));
#else
  return (Native<double>)_mm_cvtepi32_pd(Half ? _mm_unpackhi_epi64((__m128i)v, (__m128i)v) : (__m128i)v);
#endif
}
/// Two native double vectors rounded to one native float vector.
inline Native<float> narrow(Native<double> low, Native<double> high) {
#if KELVM_AVX512
  return join((Vec<float, 8>)_mm512_maskz_cvtpd_ps(0xFF, (__m512d)low),
              (Vec<float, 8>)_mm512_maskz_cvtpd_ps(0xFF, (__m512d)high));
#elif KELVM_AVX2
  return join((Vec<float, 4>)_mm256_cvtpd_ps((__m256d)low), (Vec<float, 4>)_mm256_cvtpd_ps((__m256d)high));
#else
  return (Native<float>)_mm_movelh_ps(_mm_cvtpd_ps((__m128d)low), _mm_cvtpd_ps((__m128d)high));
#endif
}

/// Evaluates f, written for double lanes, on float lanes: widened, one native double vector after the other, and
/// rounded once. f may take several arguments.
template <class F, class V, class... More> inline V in_double(F f, V x, More... more) {
  if constexpr (lanes<V> == 1)
    return float(f(double(x), double(more)...));
  else
    return narrow(f(widen<0>(x), widen<0>(more)...), f(widen<1>(x), widen<1>(more)...));
}

} // namespace kelvm::inline KELVM_BUILD
