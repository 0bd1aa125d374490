#include "cpu/features.hpp"

#include <cpuid.h>

namespace kelvm {

int ownGetFeature(int mask) {
  unsigned eax, ebx, ecx, edx;
  if (mask != feature_sse42 || !__get_cpuid(1, &eax, &ebx, &ecx, &edx)) return 0;
  return (ecx & bit_SSE4_2) != 0;
}

} // namespace kelvm
