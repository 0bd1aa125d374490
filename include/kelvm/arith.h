/* SPDX-License-Identifier: MIT */
/* Arithmetic on arrays and rounding to integral values. Conventions, status codes, aliasing: kelvm/types.h. */
#ifndef KELVM_ARITH_H
#define KELVM_ARITH_H

#include "kelvm/types.h"

KELVM_BEGIN_DECLARATIONS

/* Exact arithmetic: one IEEE operation an element, in the caller's rounding and flush mode. No warnings.
 *
 * Arrays may overlap in any way: the results are those of a forward loop over the elements, so a destination one
 * element above its source reads what was just written. Of two NaNs the first source's is returned, quieted. */

/** dst[i] = src1[i] + src2[i] */
KELVM_API kelStatus kelsAdd_32f_A24(const float* src1, const float* src2, float* dst, int len);
KELVM_API kelStatus kelsAdd_64f_A53(const double* src1, const double* src2, double* dst, int len);

/** dst[i] = src1[i] - src2[i] */
KELVM_API kelStatus kelsSub_32f_A24(const float* src1, const float* src2, float* dst, int len);
KELVM_API kelStatus kelsSub_64f_A53(const double* src1, const double* src2, double* dst, int len);

/** dst[i] = src1[i] * src2[i] */
KELVM_API kelStatus kelsMul_32f_A24(const float* src1, const float* src2, float* dst, int len);
KELVM_API kelStatus kelsMul_64f_A53(const double* src1, const double* src2, double* dst, int len);

/** dst[i] = src[i] * src[i] */
KELVM_API kelStatus kelsSqr_32f_A24(const float* src, float* dst, int len);
KELVM_API kelStatus kelsSqr_64f_A53(const double* src, double* dst, int len);

/** dst[i] = |src[i]|, as a multiplication by 1 with the sign of src[i], in the caller's mode: a NaN comes back with its
 * sign, a signalling NaN quieted with invalid raised; a subnormal gives zero where the caller flushes. No warnings. */
KELVM_API kelStatus kelsAbs_32f_A24(const float* src, float* dst, int len);
KELVM_API kelStatus kelsAbs_64f_A53(const double* src, double* dst, int len);

/* Division. At the reduced accuracies (A11, A21, A26, A50) the bits may differ between processors, and a result that
 * is a number of the type is held to the accuracy only. */

/** dst[i] = src1[i] / src2[i]: the IEEE quotient at A24 and A53, within 2^-11, 2^-21, 2^-26 or 2^-50 of it at the other
 * accuracies; subnormal arguments and results are honoured. An infinity over a finite value gives an infinity, a finite
 * value over an infinity a zero, without warning.
 * Warnings: kelStatusSingularity for x / 0, x finite and non-zero (infinity of the product's sign); kelStatusDomain for
 * 0 / 0 and infinity / infinity (NaN); kelStatusOverflow; kelStatusUnderflow for a quotient below the normal range. */
KELVM_API kelStatus kelsDiv_32f_A11(const float* src1, const float* src2, float* dst, int len);
KELVM_API kelStatus kelsDiv_32f_A21(const float* src1, const float* src2, float* dst, int len);
KELVM_API kelStatus kelsDiv_32f_A24(const float* src1, const float* src2, float* dst, int len);
KELVM_API kelStatus kelsDiv_64f_A26(const double* src1, const double* src2, double* dst, int len);
KELVM_API kelStatus kelsDiv_64f_A50(const double* src1, const double* src2, double* dst, int len);
KELVM_API kelStatus kelsDiv_64f_A53(const double* src1, const double* src2, double* dst, int len);

/** dst[i] = 1 / src[i]: correctly rounded at A24 and A53, within 2^-11, 2^-21, 2^-26 or 2^-50 at the other accuracies;
 * an infinity gives a zero of its sign.
 * Warnings: kelStatusSingularity for a zero (infinity of its sign); kelStatusOverflow for a subnormal whose reciprocal
 * overflows; kelStatusUnderflow for a subnormal reciprocal. */
KELVM_API kelStatus kelsInv_32f_A11(const float* src, float* dst, int len);
KELVM_API kelStatus kelsInv_32f_A21(const float* src, float* dst, int len);
KELVM_API kelStatus kelsInv_32f_A24(const float* src, float* dst, int len);
KELVM_API kelStatus kelsInv_64f_A26(const double* src, double* dst, int len);
KELVM_API kelStatus kelsInv_64f_A50(const double* src, double* dst, int len);
KELVM_API kelStatus kelsInv_64f_A53(const double* src, double* dst, int len);

/* Rounding to integral values, kept in the type. Exact; infinities and zeros are kept, signs included, except where
 * said otherwise; a NaN gives a quiet NaN. No warnings. */

/** Toward plus infinity. Raises inexact for a value that is not integral. */
KELVM_API kelStatus kelsCeil_32f(const float* src, float* dst, int len);
KELVM_API kelStatus kelsCeil_64f(const double* src, double* dst, int len);

/** Toward minus infinity. Raises inexact for a value that is not integral. */
KELVM_API kelStatus kelsFloor_32f(const float* src, float* dst, int len);
KELVM_API kelStatus kelsFloor_64f(const double* src, double* dst, int len);

/** Toward zero. Raises inexact for a value that is not integral. */
KELVM_API kelStatus kelsTrunc_32f(const float* src, float* dst, int len);
KELVM_API kelStatus kelsTrunc_64f(const double* src, double* dst, int len);

/** To nearest, halfway cases away from zero. Every zero result is +0, also for -0 and for negative values that round to
 * zero; an infinity raises invalid. */
KELVM_API kelStatus kelsRound_32f(const float* src, float* dst, int len);
KELVM_API kelStatus kelsRound_64f(const double* src, double* dst, int len);

/** In the caller's rounding and flush mode. Raises inexact for a value that is not integral. */
KELVM_API kelStatus kelsRint_32f(const float* src, float* dst, int len);
KELVM_API kelStatus kelsRint_64f(const double* src, double* dst, int len);

/** In the caller's rounding and flush mode, without raising inexact. */
KELVM_API kelStatus kelsNearbyInt_32f(const float* src, float* dst, int len);
KELVM_API kelStatus kelsNearbyInt_64f(const double* src, double* dst, int len);

/** Splits src[i] into dstInt[i], the integral part (toward zero), and dstFrac[i], the fractional part, both with the
 * sign of src[i]. An integral value or an infinity has a zero of its sign as fractional part; a NaN gives a quiet NaN
 * in both. */
KELVM_API kelStatus kelsModf_32f(const float* src, float* dstInt, float* dstFrac, int len);
KELVM_API kelStatus kelsModf_64f(const double* src, double* dstInt, double* dstFrac, int len);

KELVM_END_DECLARATIONS

#endif
