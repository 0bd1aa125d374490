// How exact the result of a core is. Cores (logarithm, exponential, angle, error function ...) serve functions of many
// accuracies, and a function may need more or less than its own: a power multiplies the error of its logarithm, a float
// rounded correctly needs some 40 bits in double. The names say what a core guarantees at least; the exact bound stands
// beside the core.
#pragma once

#include "simd/isa.hpp"

namespace kelvm::inline KELVM_BUILD {

/// A bound on the relative error.
enum class Accuracy {
  extended, ///< 2^-68, as a double-word: what is multiplied before it is rounded
  full,     ///< 2^-56, as a double-word, to be rounded once; 0.51 to 0.55 ulp where it is rounded already
  bits50,   ///< 2^-50
  bits49,   ///< 2^-49
  bits46,   ///< 2^-46 of a float
  bits40,   ///< 2^-40: decides nearly every rounding to float
  bits33,   ///< 2^-33: rounded to float it adds little to half an ulp
  bits27,   ///< 2^-27
  bits21,   ///< 2^-21, in float arithmetic
  bits11,   ///< 2^-11, in float arithmetic
};

/// What a core may be given, where positive arguments take less.
enum class Arguments { any, positive };

} // namespace kelvm::inline KELVM_BUILD
