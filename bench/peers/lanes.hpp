// The registers of the instruction set that a module is compiled for, for sweep().
#pragma once

#include "sweep.hpp"

#include <immintrin.h>

namespace bench {

template <class T> struct Register;
#if defined(__AVX512F__)
using Doubles = __m512d;
using Floats = __m512;
#elif defined(__AVX2__)
using Doubles = __m256d;
using Floats = __m256;
#else
using Doubles = __m128d;
using Floats = __m128;
#endif
template <> struct Register<double> { using Vector = Doubles; };
template <> struct Register<float> { using Vector = Floats; };

template <class T> struct Lanes {
  using Element = T;
  using Vector = typename Register<T>::Vector;
  using V = Vector;
  static constexpr int width = sizeof(V) / sizeof(T);
  static V load(const T* p) {
    V v;
    __builtin_memcpy(&v, p, sizeof v);
    return v;
  }
  static void store(T* p, V v) { __builtin_memcpy(p, &v, sizeof v); }
  static V splat(T x) { return V{} + x; }
};
using Double = Lanes<double>;
using Float = Lanes<float>;

/// Complex numbers as a vector of real and one of imaginary parts.
template <class L> struct ComplexLanes {
  using Part = typename L::Element;
  using V = typename L::Vector;
  struct Element {
    Part re, im;
  };
  struct Vector {
    V re, im;
  };
  static constexpr int width = L::width;

  static Vector load(const Element* p) {
    const V low = L::load(&p->re), high = L::load(&p->re + width);
    if constexpr (width == 2) return {shuffle<0, 2>(low, high), shuffle<1, 3>(low, high)};
    if constexpr (width == 4) return {shuffle<0, 2, 4, 6>(low, high), shuffle<1, 3, 5, 7>(low, high)};
    if constexpr (width == 8)
      return {shuffle<0, 2, 4, 6, 8, 10, 12, 14>(low, high), shuffle<1, 3, 5, 7, 9, 11, 13, 15>(low, high)};
    if constexpr (width == 16)
      return {shuffle<0, 2, 4, 6, 8, 10, 12, 14, 16, 18, 20, 22, 24, 26, 28, 30>(low, high),
              shuffle<1, 3, 5, 7, 9, 11, 13, 15, 17, 19, 21, 23, 25, 27, 29, 31>(low, high)};
  }
  static void store(Element* p, Vector z) {
    V low, high;
    if constexpr (width == 2) low = shuffle<0, 2>(z.re, z.im), high = shuffle<1, 3>(z.re, z.im);
    if constexpr (width == 4) low = shuffle<0, 4, 1, 5>(z.re, z.im), high = shuffle<2, 6, 3, 7>(z.re, z.im);
    if constexpr (width == 8)
      low = shuffle<0, 8, 1, 9, 2, 10, 3, 11>(z.re, z.im), high = shuffle<4, 12, 5, 13, 6, 14, 7, 15>(z.re, z.im);
    if constexpr (width == 16)
      low = shuffle<0, 16, 1, 17, 2, 18, 3, 19, 4, 20, 5, 21, 6, 22, 7, 23>(z.re, z.im),
      high = shuffle<8, 24, 9, 25, 10, 26, 11, 27, 12, 28, 13, 29, 14, 30, 15, 31>(z.re, z.im);
    L::store(&p->re, low);
    L::store(&p->re + width, high);
  }

private:
  template <int... I> static V shuffle(V a, V b) { return __builtin_shufflevector(a, b, I...); }
};

} // namespace bench
