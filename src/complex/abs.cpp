// The absolute value of a complex number is the hypotenuse of its parts (root/hypot.hpp).
#include "frame/export.hpp"
#include "kelvm/complex.h"
#include "root/hypot.hpp"

namespace kelvm::inline KELVM_BUILD::hypotenuse {

KELVM_UNARY(kelsAbs_32fc_A11, ReducedHypot<float>)
KELVM_UNARY(kelsAbs_32fc_A21, ReducedHypot<float>)
KELVM_UNARY(kelsAbs_32fc_A24, Hypot32A24)
KELVM_UNARY(kelsAbs_64fc_A26, ReducedHypot<double, true>)
KELVM_UNARY(kelsAbs_64fc_A50, ReducedHypot<double>)
KELVM_UNARY(kelsAbs_64fc_A53, Hypot64A53)

} // namespace kelvm::inline KELVM_BUILD::hypotenuse
