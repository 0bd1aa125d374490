// Error-free steps for builds with a fused multiply-add.
#pragma once

#include "exact/double_word.hpp"

namespace kelvm::inline KELVM_BUILD {

/// c + a b as a double-word, the product unrounded and the lower word rounded, where c - (c + a b) is exact: c = 0 or
/// |c| >= 2 |a b|. Boldo, Muller, "Exact and approximated error of the FMA", 2011, have the general case.
template <class V> inline DoubleWord<V> fast_mul_add(V a, V b, V c) {
  const V sum = mul_add(a, b, c);
  return {sum, mul_add(a, b, c - sum)};
}

} // namespace kelvm::inline KELVM_BUILD
