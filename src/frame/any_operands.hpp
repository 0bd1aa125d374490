// Kernels into which any operands go: what the formula cannot do shows in a number that has to be in a range.
#pragma once

#include "frame/kernel.hpp"

namespace kelvm::inline KELVM_BUILD {

/// A kernel that takes elements as they come and has a ResultTest for those that its formula does not cover.
template <class K> struct AnyOperands : K {
  static constexpr bool spurious_underflow = true;
  static constexpr bool spurious_exceptions = !flags_stay;
  static constexpr bool signalling_nan_earns_invalid = true;
  template <class V, class... More> static SignMask<V> special(V, More...) { return SignMask<V>{}; }
};

} // namespace kelvm::inline KELVM_BUILD
