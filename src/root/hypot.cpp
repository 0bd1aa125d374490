// Hypot (root/hypot.hpp).
#include "root/hypot.hpp"
#include "frame/export.hpp"
#include "kelvm/root.h"

namespace kelvm::inline KELVM_BUILD::hypotenuse {

KELVM_BINARY(kelsHypot_32f_A11, ReducedHypot<float>)
KELVM_BINARY(kelsHypot_32f_A21, ReducedHypot<float>)
KELVM_BINARY(kelsHypot_32f_A24, Hypot32A24)
KELVM_BINARY(kelsHypot_64f_A26, ReducedHypot<double, true>)
KELVM_BINARY(kelsHypot_64f_A50, ReducedHypot<double>)
KELVM_BINARY(kelsHypot_64f_A53, Hypot64A53)

} // namespace kelvm::inline KELVM_BUILD::hypotenuse
