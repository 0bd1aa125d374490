// The loop around a vector function, as a user would write it: whole vectors, then a padded one.
#pragma once

#include "peer.hpp"

namespace bench {

/// L describes a vector: Element, Vector, width, load, store. F takes one or two of them and returns one, or a struct
/// of two where there are two destinations.
template <class L, int Sources, int Destinations, int Unroll = 1, class F> inline void sweep(const Call& call, F f) {
  using T = typename L::Element;
  const T* const src1 = static_cast<const T*>(call.src1);
  const T* const src2 = static_cast<const T*>(call.src2);
  T* const dst1 = static_cast<T*>(call.dst1);
  T* const dst2 = static_cast<T*>(call.dst2);
  const auto apply = [&](const T* a, const T* b) {
    if constexpr (Sources == 1)
      return f(L::load(a));
    else
      return f(L::load(a), L::load(b));
  };
  const auto put = [&](T* a, T* b, const auto& result) {
    if constexpr (Destinations == 1) {
      L::store(a, result);
    } else {
      const auto& [first, second] = result;
      L::store(a, first);
      L::store(b, second);
    }
  };
  constexpr int width = L::width;
  std::ptrdiff_t i = 0;
  if constexpr (Unroll == 4) {
    for (; i + 4 * width <= call.n; i += 4 * width) {
      const auto r0 = apply(src1 + i, src2 + i);
      const auto r1 = apply(src1 + i + width, src2 + i + width);
      const auto r2 = apply(src1 + i + 2 * width, src2 + i + 2 * width);
      const auto r3 = apply(src1 + i + 3 * width, src2 + i + 3 * width);
      put(dst1 + i, dst2 + i, r0);
      put(dst1 + i + width, dst2 + i + width, r1);
      put(dst1 + i + 2 * width, dst2 + i + 2 * width, r2);
      put(dst1 + i + 3 * width, dst2 + i + 3 * width, r3);
    }
  }
  for (; i + width <= call.n; i += width) put(dst1 + i, dst2 + i, apply(src1 + i, src2 + i));
  if (const int rest = int(call.n - i); rest > 0) {
    T in1[width], in2[width], out1[width], out2[width];
    for (int k = 0; k < width; ++k) {
      in1[k] = src1[i + (k < rest ? k : 0)];
      in2[k] = Sources == 2 ? src2[i + (k < rest ? k : 0)] : in1[k];
    }
    put(out1, out2, apply(in1, in2));
    for (int k = 0; k < rest; ++k) {
      dst1[i + k] = out1[k];
      if (Destinations == 2) dst2[i + k] = out2[k];
    }
  }
}

template <class T> T scalar_of(const Call& call) { return *static_cast<const T*>(call.scalar); }

} // namespace bench
