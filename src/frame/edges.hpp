// Zeros and infinities that kernels answer by vectors, as frame/kernel.hpp describes it: bases for kernels of one real
// source.
#pragma once

#include "frame/status.hpp"

namespace kelvm::inline KELVM_BUILD {

template <class V> inline SignMask<V> zero_lanes(V x) { return sign_mask<V>(int_bits(abs(x)) == Int<V>{}); }
template <class V> inline SignMask<V> infinite_lanes(V x) {
  return sign_mask<V>(int_bits(abs(x)) == int_bits(splat<V>(infinity<Lane<V>>)));
}

/// Zeros give an infinity of one sign, or of their own where Sign is 0.
template <int Sign> struct PoleAtZero {
  static constexpr kelStatus edge_code = kelStatusSingularity;
  template <class V> static SignMask<V> edge_lanes(V x) { return zero_lanes(x); }
  template <class V> static V edge_result(V x) {
    constexpr Lane<V> result = Sign < 0 ? -infinity<Lane<V>> : infinity<Lane<V>>;
    return Sign != 0 ? splat<V>(result) : with_sign(splat<V>(result), sign_of(x));
  }
};

/// -infinity gives an integer, infinity itself.
template <int Least> struct ExponentialOfInfinities {
  static constexpr kelStatus edge_code = kelStatusOk;
  template <class V> static SignMask<V> edge_lanes(V x) { return infinite_lanes(x); }
  template <class V> static V edge_result(V x) { return select(int_bits(x), splat<V>(Least), x); }
};

} // namespace kelvm::inline KELVM_BUILD
