// Registers of 64 bytes: what the compiler's vector operators do not say, by lane type. The masked forms with all lanes
// set are plain operations; g++'s plain forms start from an undefined register, of which it warns.
#pragma once

#include "simd/types.hpp"

namespace kelvm::inline KELVM_BUILD {

template <> struct Register<Vec<double, 8>> {
  using V = Vec<double, 8>;
  static constexpr __mmask8 all = 0xFF;
  static V smaller_of(V a, V b) { return (V)_mm512_maskz_min_pd(all, (__m512d)a, (__m512d)b); }
  static V larger_of(V a, V b) { return (V)_mm512_maskz_max_pd(all, (__m512d)a, (__m512d)b); }
  static V sqrt(V v) { return (V)_mm512_maskz_sqrt_pd(all, (__m512d)v); }
  template <int Control> static V round(V v) { return (V)_mm512_maskz_roundscale_pd(all, (__m512d)v, Control); }
  static V mul_add(V a, V b, V c) { return (V)_mm512_fmadd_pd((__m512d)a, (__m512d)b, (__m512d)c); }
  static V mul_sub(V a, V b, V c) { return (V)_mm512_fmsub_pd((__m512d)a, (__m512d)b, (__m512d)c); }
  static V sub_mul(V c, V a, V b) { return (V)_mm512_fnmadd_pd((__m512d)a, (__m512d)b, (__m512d)c); }
  static V gather(const double* from, Int<V> at) {
    return (V)_mm512_mask_i64gather_pd((__m512d)V{}, all, (__m512i)at, from, 8);
  }
  static BitMask movemask(V v) { return BitMask(_mm512_movepi64_mask((__m512i)v)); }
};

template <> struct Register<Vec<float, 16>> {
  using V = Vec<float, 16>;
  static constexpr __mmask16 all = 0xFFFF;
  static V smaller_of(V a, V b) { return (V)_mm512_maskz_min_ps(all, (__m512)a, (__m512)b); }
  static V larger_of(V a, V b) { return (V)_mm512_maskz_max_ps(all, (__m512)a, (__m512)b); }
  static V sqrt(V v) { return (V)_mm512_maskz_sqrt_ps(all, (__m512)v); }
  template <int Control> static V round(V v) { return (V)_mm512_maskz_roundscale_ps(all, (__m512)v, Control); }
  static V mul_add(V a, V b, V c) { return (V)_mm512_fmadd_ps((__m512)a, (__m512)b, (__m512)c); }
  static V mul_sub(V a, V b, V c) { return (V)_mm512_fmsub_ps((__m512)a, (__m512)b, (__m512)c); }
  static V sub_mul(V c, V a, V b) { return (V)_mm512_fnmadd_ps((__m512)a, (__m512)b, (__m512)c); }
  static V gather(const float* from, Int<V> at) {
    return (V)_mm512_mask_i32gather_ps((__m512)V{}, all, (__m512i)at, from, 4);
  }
  static BitMask movemask(V v) { return BitMask(_mm512_movepi32_mask((__m512i)v)); }
};

} // namespace kelvm::inline KELVM_BUILD
