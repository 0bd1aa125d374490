/* SPDX-License-Identifier: MIT */
/* Special functions: the error function, its complement and their inverses, the normal distribution function and its
 * inverse. Conventions, status codes, aliasing: kelvm/types.h.
 *
 * A NaN comes back quiet and without a warning. Error: 64f_A53 at most 0.52 ulp (the inverses 0.505 ulp); 32f_A24
 * correctly rounded; the others 2^-bits of the suffix, relative. A destination may be a source. */
#ifndef KELVM_SPECIAL_H
#define KELVM_SPECIAL_H

#include "kelvm/types.h"

KELVM_BEGIN_DECLARATIONS

/** dst[i] = erf(src[i]), for every real number: 2 / sqrt(pi) times the integral of e^(-t^2) from 0 to src[i]. +-0 is
 * kept,
 * +-inf gives +-1, no result is beyond +-1. No warnings. */
KELVM_API kelStatus kelsErf_32f_A11(const float* src, float* dst, int len);
KELVM_API kelStatus kelsErf_32f_A21(const float* src, float* dst, int len);
KELVM_API kelStatus kelsErf_32f_A24(const float* src, float* dst, int len);
KELVM_API kelStatus kelsErf_64f_A26(const double* src, double* dst, int len);
KELVM_API kelStatus kelsErf_64f_A50(const double* src, double* dst, int len);
KELVM_API kelStatus kelsErf_64f_A53(const double* src, double* dst, int len);

/** dst[i] = erfc(src[i]) = 1 - erf(src[i]), for every real number, with its relative accuracy over the whole tail. -inf
 * gives 2, +inf gives +0, without a warning.
 * Warnings: kelStatusUnderflow where a finite argument's result is below the smallest normal number (subnormal or +0).
 */
KELVM_API kelStatus kelsErfc_32f_A11(const float* src, float* dst, int len);
KELVM_API kelStatus kelsErfc_32f_A21(const float* src, float* dst, int len);
KELVM_API kelStatus kelsErfc_32f_A24(const float* src, float* dst, int len);
KELVM_API kelStatus kelsErfc_64f_A26(const double* src, double* dst, int len);
KELVM_API kelStatus kelsErfc_64f_A50(const double* src, double* dst, int len);
KELVM_API kelStatus kelsErfc_64f_A53(const double* src, double* dst, int len);

/** dst[i] = erfinv(src[i]), the inverse of the error function, for -1 < src[i] < 1; +-0 is kept.
 * Warnings: kelStatusSingularity at +-1 (result +-inf), kelStatusDomain beyond, infinities included (result NaN). A
 * subnormal result is rounded once and gives no warning. */
KELVM_API kelStatus kelsErfInv_32f_A11(const float* src, float* dst, int len);
KELVM_API kelStatus kelsErfInv_32f_A21(const float* src, float* dst, int len);
KELVM_API kelStatus kelsErfInv_32f_A24(const float* src, float* dst, int len);
KELVM_API kelStatus kelsErfInv_64f_A26(const double* src, double* dst, int len);
KELVM_API kelStatus kelsErfInv_64f_A50(const double* src, double* dst, int len);
KELVM_API kelStatus kelsErfInv_64f_A53(const double* src, double* dst, int len);

/** dst[i] = erfcinv(src[i]) = erfinv(1 - src[i]), for 0 < src[i] < 2, subnormal arguments included; exactly +0 at 1.
 * Warnings: kelStatusSingularity at +-0 (result +inf) and at 2 (result -inf), kelStatusDomain below 0 and above 2,
 * infinities included (result NaN). */
KELVM_API kelStatus kelsErfcInv_32f_A11(const float* src, float* dst, int len);
KELVM_API kelStatus kelsErfcInv_32f_A21(const float* src, float* dst, int len);
KELVM_API kelStatus kelsErfcInv_32f_A24(const float* src, float* dst, int len);
KELVM_API kelStatus kelsErfcInv_64f_A26(const double* src, double* dst, int len);
KELVM_API kelStatus kelsErfcInv_64f_A50(const double* src, double* dst, int len);
KELVM_API kelStatus kelsErfcInv_64f_A53(const double* src, double* dst, int len);

/** dst[i] = Phi(src[i]), the standard normal distribution function, for every real number; exactly 1/2 at +-0. -inf
 * gives +0, +inf gives 1, without a warning. Warnings: kelStatusUnderflow where a finite argument's result is below the
 * smallest normal number (subnormal or +0). */
KELVM_API kelStatus kelsCdfNorm_32f_A11(const float* src, float* dst, int len);
KELVM_API kelStatus kelsCdfNorm_32f_A21(const float* src, float* dst, int len);
KELVM_API kelStatus kelsCdfNorm_32f_A24(const float* src, float* dst, int len);
KELVM_API kelStatus kelsCdfNorm_64f_A26(const double* src, double* dst, int len);
KELVM_API kelStatus kelsCdfNorm_64f_A50(const double* src, double* dst, int len);
KELVM_API kelStatus kelsCdfNorm_64f_A53(const double* src, double* dst, int len);

/** dst[i] = x with Phi(x) = src[i], the quantile of the standard normal distribution, for 0 < src[i] < 1, subnormal
 * arguments included; exactly +0 at 1/2.
 * Warnings: kelStatusSingularity at +-0 (result -inf) and at 1 (result +inf), kelStatusDomain below 0 and above 1,
 * infinities included (result NaN). */
KELVM_API kelStatus kelsCdfNormInv_32f_A11(const float* src, float* dst, int len);
KELVM_API kelStatus kelsCdfNormInv_32f_A21(const float* src, float* dst, int len);
KELVM_API kelStatus kelsCdfNormInv_32f_A24(const float* src, float* dst, int len);
KELVM_API kelStatus kelsCdfNormInv_64f_A26(const double* src, double* dst, int len);
KELVM_API kelStatus kelsCdfNormInv_64f_A50(const double* src, double* dst, int len);
KELVM_API kelStatus kelsCdfNormInv_64f_A53(const double* src, double* dst, int len);

KELVM_END_DECLARATIONS

#endif
