// Registers of 32 bytes: what the compiler's vector operators do not say, by lane type.
#pragma once

#include "simd/types.hpp"

namespace kelvm::inline KELVM_BUILD {

template <> struct Register<Vec<double, 4>> {
  using V = Vec<double, 4>;
  static V smaller_of(V a, V b) { return (V)_mm256_min_pd((__m256d)a, (__m256d)b); }
  static V larger_of(V a, V b) { return (V)_mm256_max_pd((__m256d)a, (__m256d)b); }
  static V sqrt(V v) { return (V)_mm256_sqrt_pd((__m256d)v); }
  template <int Control> static V round(V v) { return (V)_mm256_round_pd((__m256d)v, Control); }
  static V mul_add(V a, V b, V c) { return (V)_mm256_fmadd_pd((__m256d)a, (__m256d)b, (__m256d)c); }
  static V mul_sub(V a, V b, V c) { return (V)_mm256_fmsub_pd((__m256d)a, (__m256d)b, (__m256d)c); }
  static V sub_mul(V c, V a, V b) { return (V)_mm256_fnmadd_pd((__m256d)a, (__m256d)b, (__m256d)c); }
  static V gather(const double* from, Int<V> at) { return (V)_mm256_i64gather_pd(from, (__m256i)at, 8); }
  static BitMask movemask(V v) { return BitMask(_mm256_movemask_pd((__m256d)v)); }
  static V blend(V mask, V a, V b) { return (V)_mm256_blendv_pd((__m256d)b, (__m256d)a, (__m256d)mask); }
};

template <> struct Register<Vec<float, 8>> {
  using V = Vec<float, 8>;
  static V smaller_of(V a, V b) { return (V)_mm256_min_ps((__m256)a, (__m256)b); }
  static V larger_of(V a, V b) { return (V)_mm256_max_ps((__m256)a, (__m256)b); }
  static V sqrt(V v) { return (V)_mm256_sqrt_ps((__m256)v); }
  template <int Control> static V round(V v) { return (V)_mm256_round_ps((__m256)v, Control); }
  static V mul_add(V a, V b, V c) { return (V)_mm256_fmadd_ps((__m256)a, (__m256)b, (__m256)c); }
  static V mul_sub(V a, V b, V c) { return (V)_mm256_fmsub_ps((__m256)a, (__m256)b, (__m256)c); }
  static V sub_mul(V c, V a, V b) { return (V)_mm256_fnmadd_ps((__m256)a, (__m256)b, (__m256)c); }
  static V gather(const float* from, Int<V> at) { return (V)_mm256_i32gather_ps(from, (__m256i)at, 4); }
  static BitMask movemask(V v) { return BitMask(_mm256_movemask_ps((__m256)v)); }
  static V blend(V mask, V a, V b) { return (V)_mm256_blendv_ps((__m256)b, (__m256)a, (__m256)mask); }
};

} // namespace kelvm::inline KELVM_BUILD
