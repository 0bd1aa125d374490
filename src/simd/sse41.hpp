// Registers of 16 bytes: what the compiler's vector operators do not say, by lane type.
#pragma once

#include "simd/types.hpp"

namespace kelvm::inline KELVM_BUILD {

template <> struct Register<Vec<double, 2>> {
  using V = Vec<double, 2>;
  static V smaller_of(V a, V b) { return (V)_mm_min_pd((__m128d)a, (__m128d)b); }
  static V larger_of(V a, V b) { return (V)_mm_max_pd((__m128d)a, (__m128d)b); }
  static V sqrt(V v) { return (V)_mm_sqrt_pd((__m128d)v); }
  template <int Control> static V round(V v) { return (V)_mm_round_pd((__m128d)v, Control); }
  static BitMask movemask(V v) { return BitMask(_mm_movemask_pd((__m128d)v)); }
  static V blend(V mask, V a, V b) { return (V)_mm_blendv_pd((__m128d)b, (__m128d)a, (__m128d)mask); }
};

template <> struct Register<Vec<float, 4>> {
  using V = Vec<float, 4>;
  static V smaller_of(V a, V b) { return (V)_mm_min_ps((__m128)a, (__m128)b); }
  static V larger_of(V a, V b) { return (V)_mm_max_ps((__m128)a, (__m128)b); }
  static V sqrt(V v) { return (V)_mm_sqrt_ps((__m128)v); }
  template <int Control> static V round(V v) { return (V)_mm_round_ps((__m128)v, Control); }
  static BitMask movemask(V v) { return BitMask(_mm_movemask_ps((__m128)v)); }
  static V blend(V mask, V a, V b) { return (V)_mm_blendv_ps((__m128)b, (__m128)a, (__m128)mask); }
};

} // namespace kelvm::inline KELVM_BUILD
