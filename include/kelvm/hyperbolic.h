/* SPDX-License-Identifier: MIT */
/* Hyperbolic functions. Conventions, status codes, aliasing: kelvm/types.h. */
#ifndef KELVM_HYPERBOLIC_H
#define KELVM_HYPERBOLIC_H

#include "kelvm/types.h"

KELVM_BEGIN_DECLARATIONS

/* All of them: a NaN comes back quiet and without a warning; tiny arguments of odd functions give themselves, subnormal
 * ones included, without a warning. Error: 64f_A53 at most 0.55 ulp, 32f_A24 correctly rounded; the others 2^-bits of
 * the suffix, relative. A destination may be a source. */

/** dst[i] = sinh(src[i]), odd; +-0 and +-inf are kept.
 * Warnings: kelStatusOverflow where the result is beyond the largest finite number (result +-inf). */
KELVM_API kelStatus kelsSinh_32f_A11(const float* src, float* dst, int len);
KELVM_API kelStatus kelsSinh_32f_A21(const float* src, float* dst, int len);
KELVM_API kelStatus kelsSinh_32f_A24(const float* src, float* dst, int len);
KELVM_API kelStatus kelsSinh_64f_A26(const double* src, double* dst, int len);
KELVM_API kelStatus kelsSinh_64f_A50(const double* src, double* dst, int len);
KELVM_API kelStatus kelsSinh_64f_A53(const double* src, double* dst, int len);

/** dst[i] = cosh(src[i]), even, never below 1; +-inf gives +inf.
 * Warnings: kelStatusOverflow where the result is beyond the largest finite number (result +inf). */
KELVM_API kelStatus kelsCosh_32f_A11(const float* src, float* dst, int len);
KELVM_API kelStatus kelsCosh_32f_A21(const float* src, float* dst, int len);
KELVM_API kelStatus kelsCosh_32f_A24(const float* src, float* dst, int len);
KELVM_API kelStatus kelsCosh_64f_A26(const double* src, double* dst, int len);
KELVM_API kelStatus kelsCosh_64f_A50(const double* src, double* dst, int len);
KELVM_API kelStatus kelsCosh_64f_A53(const double* src, double* dst, int len);

/** dst[i] = tanh(src[i]), odd, never beyond +-1; +-0 is kept, +-inf gives +-1. No warnings. */
KELVM_API kelStatus kelsTanh_32f_A11(const float* src, float* dst, int len);
KELVM_API kelStatus kelsTanh_32f_A21(const float* src, float* dst, int len);
KELVM_API kelStatus kelsTanh_32f_A24(const float* src, float* dst, int len);
KELVM_API kelStatus kelsTanh_64f_A26(const double* src, double* dst, int len);
KELVM_API kelStatus kelsTanh_64f_A50(const double* src, double* dst, int len);
KELVM_API kelStatus kelsTanh_64f_A53(const double* src, double* dst, int len);

/** dst[i] = asinh(src[i]), the inverse of sinh: odd, for every real number; +-0 and +-inf are kept. No warnings. */
KELVM_API kelStatus kelsAsinh_32f_A11(const float* src, float* dst, int len);
KELVM_API kelStatus kelsAsinh_32f_A21(const float* src, float* dst, int len);
KELVM_API kelStatus kelsAsinh_32f_A24(const float* src, float* dst, int len);
KELVM_API kelStatus kelsAsinh_64f_A26(const double* src, double* dst, int len);
KELVM_API kelStatus kelsAsinh_64f_A50(const double* src, double* dst, int len);
KELVM_API kelStatus kelsAsinh_64f_A53(const double* src, double* dst, int len);

/** dst[i] = acosh(src[i]), the inverse of cosh, for src[i] >= 1; exact at 1 (+0) and +inf.
 * Warnings: kelStatusDomain below 1, -inf included (result NaN). */
KELVM_API kelStatus kelsAcosh_32f_A11(const float* src, float* dst, int len);
KELVM_API kelStatus kelsAcosh_32f_A21(const float* src, float* dst, int len);
KELVM_API kelStatus kelsAcosh_32f_A24(const float* src, float* dst, int len);
KELVM_API kelStatus kelsAcosh_64f_A26(const double* src, double* dst, int len);
KELVM_API kelStatus kelsAcosh_64f_A50(const double* src, double* dst, int len);
KELVM_API kelStatus kelsAcosh_64f_A53(const double* src, double* dst, int len);

/** dst[i] = atanh(src[i]), the inverse of tanh: odd, for |src[i]| <= 1; +-0 is kept.
 * Warnings: kelStatusSingularity at +-1 (result +-inf), kelStatusDomain beyond, infinities included (result NaN). */
KELVM_API kelStatus kelsAtanh_32f_A11(const float* src, float* dst, int len);
KELVM_API kelStatus kelsAtanh_32f_A21(const float* src, float* dst, int len);
KELVM_API kelStatus kelsAtanh_32f_A24(const float* src, float* dst, int len);
KELVM_API kelStatus kelsAtanh_64f_A26(const double* src, double* dst, int len);
KELVM_API kelStatus kelsAtanh_64f_A50(const double* src, double* dst, int len);
KELVM_API kelStatus kelsAtanh_64f_A53(const double* src, double* dst, int len);

KELVM_END_DECLARATIONS

#endif
