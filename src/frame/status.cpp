#include "frame/status.hpp"
#include "frame/mode.hpp"

namespace kelvm::inline KELVM_BUILD {

void ownRaiseFpException(kelStatus code) {
  // volatile: the operation is made at run time, and its discarded result does not remove it.
  volatile double x;
  volatile double discarded;
  switch (code) {
  case kelStatusDomain:
    x = 0.0;
    discarded = x / x;
    break;
  case kelStatusSingularity:
    x = 0.0;
    discarded = 1.0 / x;
    break;
  case kelStatusOverflow:
    x = 0x1.fffffffffffffp+1023;
    discarded = x * x;
    break;
  case kelStatusUnderflow:
    x = 0x1.0000000000001p-1022;
    discarded = x * x;
    break;
  default:
    return;
  }
  (void)discarded;
}

void leave_mode(unsigned found, unsigned raised, bool keep_flags) {
  const unsigned traps = raised & honest_flags & ~(found >> 7);
  _mm_setcsr(keep_flags ? found | (raised & ~traps) : found);
  for (kelStatus code : {kelStatusDomain, kelStatusSingularity, kelStatusOverflow, kelStatusUnderflow})
    if ((traps & flag_of(code)) != 0) ownRaiseFpException(code);
}

} // namespace kelvm::inline KELVM_BUILD
