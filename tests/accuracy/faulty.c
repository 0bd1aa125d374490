/* A library with two faults, to see that the programs find them: one square is an ulp too large, and Sub adds. */
#include "kelvm/types.h"

KELVM_API kelStatus kelsSqr_32f_A24(const float* src, float* dst, int len) {
  for (int i = 0; i < len; ++i) dst[i] = src[i] == 1.28125f ? 1.6416017f : src[i] * src[i];
  return kelStatusOk;
}

KELVM_API kelStatus kelsSub_64f_A53(const double* src1, const double* src2, double* dst, int len) {
  for (int i = 0; i < len; ++i) dst[i] = src1[i] + src2[i];
  return kelStatusOk;
}
