#include "cpu/gathers.hpp"

#include <cpuid.h>

namespace kelvm {

bool prefers_gathers() {
  unsigned highest, eax, ebx, ecx, edx;
  __cpuid(0, highest, ebx, ecx, edx);
  if (ebx != signature_INTEL_ebx || edx != signature_INTEL_edx || ecx != signature_INTEL_ecx || highest < 7)
    return false;
  unsigned highest_part;
  __cpuid_count(7, 0, highest_part, ebx, ecx, edx);
  if (edx & bit_AVX512FP16) return true;
  if (highest_part < 1) return false;
  __cpuid_count(7, 1, eax, ebx, ecx, edx);
  return (eax & bit_AVXVNNI) != 0;
}

} // namespace kelvm
