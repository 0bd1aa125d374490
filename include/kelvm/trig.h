/* SPDX-License-Identifier: MIT */
/* Circular functions. Conventions, status codes, aliasing: kelvm/types.h. */
#ifndef KELVM_TRIG_H
#define KELVM_TRIG_H

#include "kelvm/types.h"

KELVM_BEGIN_DECLARATIONS

/* Arguments are radians. Every finite argument is reduced accurately, however large. Sines and tangents of zeros are
 * the zeros themselves; sines are odd, cosines even, and both at most 1 in magnitude.
 *
 * An infinity gives the default NaN (sign bit set, no payload) with kelStatusDomain. A NaN gives the same NaN without a
 * warning; in the 64f functions of Sin, Cos and SinCos a NaN whose upper 32 bits are those of an infinity reports
 * kelStatusDomain as well. */

/** dst[i] = sin src[i]
 *
 * Error: 64f_A53 and A50 at most 0.54 ulp, 32f_A24 0.81 ulp, 32f_A21 2^-22 relative. 32f_A11 and 64f_A26 keep the
 * absolute error below 1.6e-4 and 3e-11 and their relative accuracy everywhere but next to the multiples of pi other
 * than 0. */
KELVM_API kelStatus kelsSin_32f_A11(const float* src, float* dst, int len);
KELVM_API kelStatus kelsSin_32f_A21(const float* src, float* dst, int len);
KELVM_API kelStatus kelsSin_32f_A24(const float* src, float* dst, int len);
KELVM_API kelStatus kelsSin_64f_A26(const double* src, double* dst, int len);
KELVM_API kelStatus kelsSin_64f_A50(const double* src, double* dst, int len);
KELVM_API kelStatus kelsSin_64f_A53(const double* src, double* dst, int len);

/** dst[i] = cos src[i]
 *
 * Error: 64f_A53 and A50 at most 0.61 ulp (0.53 below 90112), 32f_A24 0.6 ulp, 32f_A21 2^-22, 32f_A11 2^-18 relative.
 * 64f_A26 keeps the absolute error below 3e-11 and its relative accuracy everywhere but next to the zeros. */
KELVM_API kelStatus kelsCos_32f_A11(const float* src, float* dst, int len);
KELVM_API kelStatus kelsCos_32f_A21(const float* src, float* dst, int len);
KELVM_API kelStatus kelsCos_32f_A24(const float* src, float* dst, int len);
KELVM_API kelStatus kelsCos_64f_A26(const double* src, double* dst, int len);
KELVM_API kelStatus kelsCos_64f_A50(const double* src, double* dst, int len);
KELVM_API kelStatus kelsCos_64f_A53(const double* src, double* dst, int len);

/** dstSin[i] = sin src[i], dstCos[i] = cos src[i]: the bits of Sin and Cos of the same type and suffix, computed
 * together. Either destination may be src; the two should not overlap. */
KELVM_API kelStatus kelsSinCos_32f_A11(const float* src, float* dstSin, float* dstCos, int len);
KELVM_API kelStatus kelsSinCos_32f_A21(const float* src, float* dstSin, float* dstCos, int len);
KELVM_API kelStatus kelsSinCos_32f_A24(const float* src, float* dstSin, float* dstCos, int len);
KELVM_API kelStatus kelsSinCos_64f_A26(const double* src, double* dstSin, double* dstCos, int len);
KELVM_API kelStatus kelsSinCos_64f_A50(const double* src, double* dstSin, double* dstCos, int len);
KELVM_API kelStatus kelsSinCos_64f_A53(const double* src, double* dstSin, double* dstCos, int len);

/** dst[i] = cos src[i] + i sin src[i], the bits of SinCos. An infinity gives NaN in both parts with kelStatusDomain; a
 * NaN gives NaN in both parts without a warning. The arrays must not overlap: a result takes twice the room of its
 * source, and not even dst == src works. */
KELVM_API kelStatus kelsCIS_32fc_A11(const float* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsCIS_32fc_A21(const float* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsCIS_32fc_A24(const float* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsCIS_64fc_A26(const double* src, Complex64f* dst, int len);
KELVM_API kelStatus kelsCIS_64fc_A50(const double* src, Complex64f* dst, int len);
KELVM_API kelStatus kelsCIS_64fc_A53(const double* src, Complex64f* dst, int len);

/** dst[i] = tan src[i]
 *
 * Never overflows: no number of either type is close enough to a pole.
 * Error: 32f_A24 correctly rounded, 64f_A53 at most 0.55 ulp, the others 2^-bits of the suffix, relative, next to zeros
 * and poles as well. */
KELVM_API kelStatus kelsTan_32f_A11(const float* src, float* dst, int len);
KELVM_API kelStatus kelsTan_32f_A21(const float* src, float* dst, int len);
KELVM_API kelStatus kelsTan_32f_A24(const float* src, float* dst, int len);
KELVM_API kelStatus kelsTan_64f_A26(const double* src, double* dst, int len);
KELVM_API kelStatus kelsTan_64f_A50(const double* src, double* dst, int len);
KELVM_API kelStatus kelsTan_64f_A53(const double* src, double* dst, int len);

/* Inverse functions give radians. Where a result is pi/2 or pi it is the nearest number of the type; 32f_A11 and A21
 * give the float below for arguments other than infinities. Error: 64f_A53 at most 0.55 ulp, the others 2^-bits of the
 * suffix, relative; 32f_A24 is correctly rounded, Atan2 at most 0.5001 ulp. A NaN gives a NaN without a warning. */

/** dst[i] = arctan src[i], from -pi/2 to pi/2
 *
 * Odd; zeros and tiny arguments are their own results, infinities give +-pi/2. No warnings. */
KELVM_API kelStatus kelsAtan_32f_A11(const float* src, float* dst, int len);
KELVM_API kelStatus kelsAtan_32f_A21(const float* src, float* dst, int len);
KELVM_API kelStatus kelsAtan_32f_A24(const float* src, float* dst, int len);
KELVM_API kelStatus kelsAtan_64f_A26(const double* src, double* dst, int len);
KELVM_API kelStatus kelsAtan_64f_A50(const double* src, double* dst, int len);
KELVM_API kelStatus kelsAtan_64f_A53(const double* src, double* dst, int len);

/** dst[i] = the angle of the point (src2[i], src1[i]), y first, from -pi to pi
 *
 * Zeros and infinities as in C: for y = +-0 the result is +-0 where the sign of x is positive and +-pi where it is
 * negative, zeros included; for x = +-0 and y other than 0 it is +-pi/2; infinite y and x give +-pi/4 and +-3 pi/4. No
 * point is a domain error or a pole. kelStatusUnderflow where the result is below the normal range and y is not 0.
 * dst may be either source. */
KELVM_API kelStatus kelsAtan2_32f_A11(const float* src1, const float* src2, float* dst, int len);
KELVM_API kelStatus kelsAtan2_32f_A21(const float* src1, const float* src2, float* dst, int len);
KELVM_API kelStatus kelsAtan2_32f_A24(const float* src1, const float* src2, float* dst, int len);
KELVM_API kelStatus kelsAtan2_64f_A26(const double* src1, const double* src2, double* dst, int len);
KELVM_API kelStatus kelsAtan2_64f_A50(const double* src1, const double* src2, double* dst, int len);
KELVM_API kelStatus kelsAtan2_64f_A53(const double* src1, const double* src2, double* dst, int len);

/** dst[i] = arcsin src[i], from -pi/2 to pi/2
 *
 * Odd; zeros and tiny arguments are their own results. kelStatusDomain and a NaN where |src[i]| > 1. */
KELVM_API kelStatus kelsAsin_32f_A11(const float* src, float* dst, int len);
KELVM_API kelStatus kelsAsin_32f_A21(const float* src, float* dst, int len);
KELVM_API kelStatus kelsAsin_32f_A24(const float* src, float* dst, int len);
KELVM_API kelStatus kelsAsin_64f_A26(const double* src, double* dst, int len);
KELVM_API kelStatus kelsAsin_64f_A50(const double* src, double* dst, int len);
KELVM_API kelStatus kelsAsin_64f_A53(const double* src, double* dst, int len);

/** dst[i] = arccos src[i], from 0 to pi
 *
 * arccos 1 is +0. kelStatusDomain and a NaN where |src[i]| > 1. */
KELVM_API kelStatus kelsAcos_32f_A11(const float* src, float* dst, int len);
KELVM_API kelStatus kelsAcos_32f_A21(const float* src, float* dst, int len);
KELVM_API kelStatus kelsAcos_32f_A24(const float* src, float* dst, int len);
KELVM_API kelStatus kelsAcos_64f_A26(const double* src, double* dst, int len);
KELVM_API kelStatus kelsAcos_64f_A50(const double* src, double* dst, int len);
KELVM_API kelStatus kelsAcos_64f_A53(const double* src, double* dst, int len);

KELVM_END_DECLARATIONS

#endif
