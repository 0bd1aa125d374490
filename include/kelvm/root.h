/* SPDX-License-Identifier: MIT */
/* Roots and algebraic powers of arrays. Conventions, status codes, aliasing: kelvm/types.h.
 *
 * Relative error at the lower accuracies: A11 2^-11, A21 2^-21, A26 2^-26, A50 2^-50. Where the exact result is a
 * number of the type, A24 and A53 return it. The bits of Sqrt, InvSqrt and Pow3o2 at the lower accuracies, and of Hypot
 * at A26, may differ between processors. Subnormal arguments are honoured; a NaN gives a quiet NaN and no warning.
 */
#ifndef KELVM_ROOT_H
#define KELVM_ROOT_H

#include "kelvm/types.h"

KELVM_BEGIN_DECLARATIONS

/** dst[i] = square root of src[i], correctly rounded at A24 and A53; a zero keeps its sign.
 * Warnings: kelStatusDomain for a negative value (NaN). */
KELVM_API kelStatus kelsSqrt_32f_A11(const float* src, float* dst, int len);
KELVM_API kelStatus kelsSqrt_32f_A21(const float* src, float* dst, int len);
KELVM_API kelStatus kelsSqrt_32f_A24(const float* src, float* dst, int len);
KELVM_API kelStatus kelsSqrt_64f_A26(const double* src, double* dst, int len);
KELVM_API kelStatus kelsSqrt_64f_A50(const double* src, double* dst, int len);
KELVM_API kelStatus kelsSqrt_64f_A53(const double* src, double* dst, int len);

/** dst[i] = 1 / square root of src[i], correctly rounded at A24, 0.501 ulp at A53; +infinity gives +0.
 * Warnings: kelStatusSingularity for a zero (infinity of its sign); kelStatusDomain for a negative value (NaN). */
KELVM_API kelStatus kelsInvSqrt_32f_A11(const float* src, float* dst, int len);
KELVM_API kelStatus kelsInvSqrt_32f_A21(const float* src, float* dst, int len);
KELVM_API kelStatus kelsInvSqrt_32f_A24(const float* src, float* dst, int len);
KELVM_API kelStatus kelsInvSqrt_64f_A26(const double* src, double* dst, int len);
KELVM_API kelStatus kelsInvSqrt_64f_A50(const double* src, double* dst, int len);
KELVM_API kelStatus kelsInvSqrt_64f_A53(const double* src, double* dst, int len);

/** dst[i] = cube root of src[i], correctly rounded at A24, 0.505 ulp at A53. All values; odd; zeros and infinities are
 * kept. No warnings. */
KELVM_API kelStatus kelsCbrt_32f_A11(const float* src, float* dst, int len);
KELVM_API kelStatus kelsCbrt_32f_A21(const float* src, float* dst, int len);
KELVM_API kelStatus kelsCbrt_32f_A24(const float* src, float* dst, int len);
KELVM_API kelStatus kelsCbrt_64f_A26(const double* src, double* dst, int len);
KELVM_API kelStatus kelsCbrt_64f_A50(const double* src, double* dst, int len);
KELVM_API kelStatus kelsCbrt_64f_A53(const double* src, double* dst, int len);

/** dst[i] = 1 / cube root of src[i], correctly rounded at A24, 0.505 ulp at A53. Odd; an infinity gives a zero of its
 * sign.
 * Warnings: kelStatusSingularity for a zero (infinity of its sign). */
KELVM_API kelStatus kelsInvCbrt_32f_A11(const float* src, float* dst, int len);
KELVM_API kelStatus kelsInvCbrt_32f_A21(const float* src, float* dst, int len);
KELVM_API kelStatus kelsInvCbrt_32f_A24(const float* src, float* dst, int len);
KELVM_API kelStatus kelsInvCbrt_64f_A26(const double* src, double* dst, int len);
KELVM_API kelStatus kelsInvCbrt_64f_A50(const double* src, double* dst, int len);
KELVM_API kelStatus kelsInvCbrt_64f_A53(const double* src, double* dst, int len);

/** dst[i] = src[i]^(2/3), the square of the cube root, correctly rounded at A24, 0.505 ulp at A53. All values; even; a
 * zero gives +0, an infinity +infinity. No warnings. */
KELVM_API kelStatus kelsPow2o3_32f_A11(const float* src, float* dst, int len);
KELVM_API kelStatus kelsPow2o3_32f_A21(const float* src, float* dst, int len);
KELVM_API kelStatus kelsPow2o3_32f_A24(const float* src, float* dst, int len);
KELVM_API kelStatus kelsPow2o3_64f_A26(const double* src, double* dst, int len);
KELVM_API kelStatus kelsPow2o3_64f_A50(const double* src, double* dst, int len);
KELVM_API kelStatus kelsPow2o3_64f_A53(const double* src, double* dst, int len);

/** dst[i] = src[i]^(3/2), correctly rounded at A24, 0.501 ulp at A53; a zero gives +0, +infinity itself.
 * Warnings: kelStatusDomain for a negative value (NaN); kelStatusOverflow; kelStatusUnderflow. */
KELVM_API kelStatus kelsPow3o2_32f_A11(const float* src, float* dst, int len);
KELVM_API kelStatus kelsPow3o2_32f_A21(const float* src, float* dst, int len);
KELVM_API kelStatus kelsPow3o2_32f_A24(const float* src, float* dst, int len);
KELVM_API kelStatus kelsPow3o2_64f_A26(const double* src, double* dst, int len);
KELVM_API kelStatus kelsPow3o2_64f_A50(const double* src, double* dst, int len);
KELVM_API kelStatus kelsPow3o2_64f_A53(const double* src, double* dst, int len);

/** dst[i] = square root of (src1[i]^2 + src2[i]^2), correctly rounded at A24, 0.501 ulp at A53; the squares do not
 * overflow or underflow. An infinity in either source gives +infinity, beside a NaN as well.
 * Warnings: kelStatusOverflow; kelStatusUnderflow for a non-zero result below the normal range. */
KELVM_API kelStatus kelsHypot_32f_A11(const float* src1, const float* src2, float* dst, int len);
KELVM_API kelStatus kelsHypot_32f_A21(const float* src1, const float* src2, float* dst, int len);
KELVM_API kelStatus kelsHypot_32f_A24(const float* src1, const float* src2, float* dst, int len);
KELVM_API kelStatus kelsHypot_64f_A26(const double* src1, const double* src2, double* dst, int len);
KELVM_API kelStatus kelsHypot_64f_A50(const double* src1, const double* src2, double* dst, int len);
KELVM_API kelStatus kelsHypot_64f_A53(const double* src1, const double* src2, double* dst, int len);

KELVM_END_DECLARATIONS

#endif
