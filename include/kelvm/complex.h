/* Complex arithmetic. Conventions, status codes, aliasing: kelvm/types.h.
 *
 * Infinities and NaNs behave as C's Annex G has it: a number with an infinite part is infinite whatever the other part.
 * Warnings of Mul, MulByConj and Div: kelStatusOverflow where finite operands give an infinite part; kelStatusDomain,
 * with invalid raised, where operands without a NaN give a NaN part (infinity times zero, zero by zero, infinity by
 * infinity); kelStatusSingularity for a number that is not zero divided by zero. A NaN operand gives NaN parts (the
 * default NaN) unless an infinity decides, and no warning. A part below the normal range is no warning. */
#ifndef KELVM_COMPLEX_H
#define KELVM_COMPLEX_H

#include "kelvm/types.h"

KELVM_BEGIN_DECLARATIONS

/** dst[i] = src1[i] + src2[i], one IEEE operation a part. No warnings. */
KELVM_API kelStatus kelsAdd_32fc_A24(const Complex32f* src1, const Complex32f* src2, Complex32f* dst, int len);
KELVM_API kelStatus kelsAdd_64fc_A53(const Complex64f* src1, const Complex64f* src2, Complex64f* dst, int len);

/** dst[i] = src1[i] - src2[i], one IEEE operation a part. No warnings. */
KELVM_API kelStatus kelsSub_32fc_A24(const Complex32f* src1, const Complex32f* src2, Complex32f* dst, int len);
KELVM_API kelStatus kelsSub_64fc_A53(const Complex64f* src1, const Complex64f* src2, Complex64f* dst, int len);

/** dst[i] = the conjugate of src[i]: the sign bit of the imaginary part is turned, of zeros and NaNs too. Raises
 * nothing, no warnings. */
KELVM_API kelStatus kelsConj_32fc_A24(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsConj_64fc_A53(const Complex64f* src, Complex64f* dst, int len);

/** dst[i] = src1[i] * src2[i]. A24 and A53: each part within 0.51 ulp, also where its two products cancel; the others
 * within 2^-bits of the suffix, relative to the absolute value of the result. */
KELVM_API kelStatus kelsMul_32fc_A11(const Complex32f* src1, const Complex32f* src2, Complex32f* dst, int len);
KELVM_API kelStatus kelsMul_32fc_A21(const Complex32f* src1, const Complex32f* src2, Complex32f* dst, int len);
KELVM_API kelStatus kelsMul_32fc_A24(const Complex32f* src1, const Complex32f* src2, Complex32f* dst, int len);
KELVM_API kelStatus kelsMul_64fc_A26(const Complex64f* src1, const Complex64f* src2, Complex64f* dst, int len);
KELVM_API kelStatus kelsMul_64fc_A50(const Complex64f* src1, const Complex64f* src2, Complex64f* dst, int len);
KELVM_API kelStatus kelsMul_64fc_A53(const Complex64f* src1, const Complex64f* src2, Complex64f* dst, int len);

/** dst[i] = src1[i] * the conjugate of src2[i]. Accuracy as Mul. */
KELVM_API kelStatus kelsMulByConj_32fc_A11(const Complex32f* src1, const Complex32f* src2, Complex32f* dst, int len);
KELVM_API kelStatus kelsMulByConj_32fc_A21(const Complex32f* src1, const Complex32f* src2, Complex32f* dst, int len);
KELVM_API kelStatus kelsMulByConj_32fc_A24(const Complex32f* src1, const Complex32f* src2, Complex32f* dst, int len);
KELVM_API kelStatus kelsMulByConj_64fc_A26(const Complex64f* src1, const Complex64f* src2, Complex64f* dst, int len);
KELVM_API kelStatus kelsMulByConj_64fc_A50(const Complex64f* src1, const Complex64f* src2, Complex64f* dst, int len);
KELVM_API kelStatus kelsMulByConj_64fc_A53(const Complex64f* src1, const Complex64f* src2, Complex64f* dst, int len);

/** dst[i] = src1[i] / src2[i]. A24 and A53: each part within 0.51 ulp; the others within 2^-bits of the suffix,
 * relative to the absolute value of the result. */
KELVM_API kelStatus kelsDiv_32fc_A11(const Complex32f* src1, const Complex32f* src2, Complex32f* dst, int len);
KELVM_API kelStatus kelsDiv_32fc_A21(const Complex32f* src1, const Complex32f* src2, Complex32f* dst, int len);
KELVM_API kelStatus kelsDiv_32fc_A24(const Complex32f* src1, const Complex32f* src2, Complex32f* dst, int len);
KELVM_API kelStatus kelsDiv_64fc_A26(const Complex64f* src1, const Complex64f* src2, Complex64f* dst, int len);
KELVM_API kelStatus kelsDiv_64fc_A50(const Complex64f* src1, const Complex64f* src2, Complex64f* dst, int len);
KELVM_API kelStatus kelsDiv_64fc_A53(const Complex64f* src1, const Complex64f* src2, Complex64f* dst, int len);

/** dst[i] = the absolute value of src[i], infinite where a part is, whatever the other. No overflow or underflow of
 * intermediate values. Warnings: kelStatusOverflow where a finite number's absolute value overflows; kelStatusUnderflow
 * where it is below the smallest normal number and not zero. A24: correctly rounded; A53: within 0.52 ulp; the others
 * within 2^-bits of the suffix. */
KELVM_API kelStatus kelsAbs_32fc_A11(const Complex32f* src, float* dst, int len);
KELVM_API kelStatus kelsAbs_32fc_A21(const Complex32f* src, float* dst, int len);
KELVM_API kelStatus kelsAbs_32fc_A24(const Complex32f* src, float* dst, int len);
KELVM_API kelStatus kelsAbs_64fc_A26(const Complex64f* src, double* dst, int len);
KELVM_API kelStatus kelsAbs_64fc_A50(const Complex64f* src, double* dst, int len);
KELVM_API kelStatus kelsAbs_64fc_A53(const Complex64f* src, double* dst, int len);

/* Inverse circular and hyperbolic functions. Special values as C's Annex G has them (casinh, cacos, cacosh, catanh); asin z
 * and atan z are -i asinh(iz) and -i atanh(iz). NaN parts of results are the default NaN, without a warning. The
 * functions are odd, but acos and acosh, and all commute with conjugation, bit for bit. */

/** dst[i] = the inverse sine of src[i], real part in [-pi/2, pi/2]. Cuts along the real axis beyond -1 and 1, continuous
 * from above where the imaginary part is +0 and from below where it is -0. Bit for bit -i asinh(i z). No warnings.
 * Each part within 0.501 ulp (A24) and 0.55 ulp (A53), also next to the cuts and the branch points; the others within
 * 2^-bits of the suffix, relative to the absolute value of the result. */
KELVM_API kelStatus kelsAsin_32fc_A11(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsAsin_32fc_A21(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsAsin_32fc_A24(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsAsin_64fc_A26(const Complex64f* src, Complex64f* dst, int len);
KELVM_API kelStatus kelsAsin_64fc_A50(const Complex64f* src, Complex64f* dst, int len);
KELVM_API kelStatus kelsAsin_64fc_A53(const Complex64f* src, Complex64f* dst, int len);

/** dst[i] = the inverse cosine of src[i], real part in [0, pi]. Cuts as Asin's, accuracy as Asin's. No warnings. */
KELVM_API kelStatus kelsAcos_32fc_A11(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsAcos_32fc_A21(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsAcos_32fc_A24(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsAcos_64fc_A26(const Complex64f* src, Complex64f* dst, int len);
KELVM_API kelStatus kelsAcos_64fc_A50(const Complex64f* src, Complex64f* dst, int len);
KELVM_API kelStatus kelsAcos_64fc_A53(const Complex64f* src, Complex64f* dst, int len);

/** dst[i] = the inverse hyperbolic sine of src[i], imaginary part in [-pi/2, pi/2]. Cuts along the imaginary axis beyond
 * -i and i, the sign of a zero real part telling the sides apart. Accuracy as Asin's. No warnings. */
KELVM_API kelStatus kelsAsinh_32fc_A11(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsAsinh_32fc_A21(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsAsinh_32fc_A24(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsAsinh_64fc_A26(const Complex64f* src, Complex64f* dst, int len);
KELVM_API kelStatus kelsAsinh_64fc_A50(const Complex64f* src, Complex64f* dst, int len);
KELVM_API kelStatus kelsAsinh_64fc_A53(const Complex64f* src, Complex64f* dst, int len);

/** dst[i] = the inverse hyperbolic cosine of src[i]: i acos(z) or -i acos(z), bit for bit, the one whose real part is not
 * negative. Cut along the real axis below 1, the sign of a zero imaginary part telling the sides apart. Accuracy as
 * Asin's. No warnings. */
KELVM_API kelStatus kelsAcosh_32fc_A11(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsAcosh_32fc_A21(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsAcosh_32fc_A24(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsAcosh_64fc_A26(const Complex64f* src, Complex64f* dst, int len);
KELVM_API kelStatus kelsAcosh_64fc_A50(const Complex64f* src, Complex64f* dst, int len);
KELVM_API kelStatus kelsAcosh_64fc_A53(const Complex64f* src, Complex64f* dst, int len);

/** dst[i] = the inverse tangent of src[i], real part in [-pi/2, pi/2]. Cuts along the imaginary axis beyond -i and i, the
 * sign of a zero real part telling the sides apart. Bit for bit -i atanh(i z). Warning: kelStatusSingularity at -i and
 * i. Accuracy as Asin's. */
KELVM_API kelStatus kelsAtan_32fc_A11(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsAtan_32fc_A21(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsAtan_32fc_A24(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsAtan_64fc_A26(const Complex64f* src, Complex64f* dst, int len);
KELVM_API kelStatus kelsAtan_64fc_A50(const Complex64f* src, Complex64f* dst, int len);
KELVM_API kelStatus kelsAtan_64fc_A53(const Complex64f* src, Complex64f* dst, int len);

/** dst[i] = the inverse hyperbolic tangent of src[i], imaginary part in [-pi/2, pi/2]. Cuts along the real axis beyond -1
 * and 1, the sign of a zero imaginary part telling the sides apart. Warning: kelStatusSingularity at -1 and 1, where the
 * real part is infinite. Accuracy as Asin's. */
KELVM_API kelStatus kelsAtanh_32fc_A11(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsAtanh_32fc_A21(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsAtanh_32fc_A24(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsAtanh_64fc_A26(const Complex64f* src, Complex64f* dst, int len);
KELVM_API kelStatus kelsAtanh_64fc_A50(const Complex64f* src, Complex64f* dst, int len);
KELVM_API kelStatus kelsAtanh_64fc_A53(const Complex64f* src, Complex64f* dst, int len);

KELVM_END_DECLARATIONS

#endif
