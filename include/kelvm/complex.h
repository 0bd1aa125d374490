/* SPDX-License-Identifier: MIT */
/* Complex arithmetic and elementary functions. Conventions, status codes, aliasing: kelvm/types.h.
 *
 * Infinities and NaNs behave as C's Annex G has it: a number with an infinite part is infinite whatever the other part.
 */
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

/* Warnings of products and quotients: kelStatusOverflow where finite operands give an infinite part; kelStatusDomain,
 * with invalid raised, where operands without a NaN give a NaN part (infinity times zero, zero by zero, infinity by
 * infinity); kelStatusSingularity for a number that is not zero divided by zero. A NaN operand gives NaN parts (the
 * default NaN) unless an infinity decides, and no warning. A part below the normal range is no warning. */

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

/* Absolute value and square root. */

/** dst[i] = the absolute value of src[i], infinite where a part is, whatever the other. No overflow or underflow of
 * intermediate values. Warnings: kelStatusOverflow where a finite number's absolute value overflows; kelStatusUnderflow
 * where it is below the smallest normal number and not zero. A24: correctly rounded; A53: within 0.52 ulp; the others
 * within 2^-bits of the suffix; at A26 the bits may differ between processors. */
KELVM_API kelStatus kelsAbs_32fc_A11(const Complex32f* src, float* dst, int len);
KELVM_API kelStatus kelsAbs_32fc_A21(const Complex32f* src, float* dst, int len);
KELVM_API kelStatus kelsAbs_32fc_A24(const Complex32f* src, float* dst, int len);
KELVM_API kelStatus kelsAbs_64fc_A26(const Complex64f* src, double* dst, int len);
KELVM_API kelStatus kelsAbs_64fc_A50(const Complex64f* src, double* dst, int len);
KELVM_API kelStatus kelsAbs_64fc_A53(const Complex64f* src, double* dst, int len);

/** dst[i] = the square root of src[i], principal branch: the real part is not negative (never -0), the imaginary part
 * has the sign of the source's, that of a zero too, which decides the side of the cut along the negative real axis.
 * Infinities and NaNs as csqrt in Annex G: an infinite imaginary part gives (inf, +-inf), -inf on the real axis (0,
 * +-inf). No warnings. No overflow or loss of small parts in between. A24, A53: each part within 0.51 ulp; the
 * others within 2^-bits of the suffix, relative to the absolute value of the result. */
KELVM_API kelStatus kelsSqrt_32fc_A11(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsSqrt_32fc_A21(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsSqrt_32fc_A24(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsSqrt_64fc_A26(const Complex64f* src, Complex64f* dst, int len);
KELVM_API kelStatus kelsSqrt_64fc_A50(const Complex64f* src, Complex64f* dst, int len);
KELVM_API kelStatus kelsSqrt_64fc_A53(const Complex64f* src, Complex64f* dst, int len);

/* The elementary functions below share their conventions. Infinities, NaNs and signs of zeros as C's Annex G has them.
 * Conjugate symmetry, oddness and evenness hold bit for bit. Warnings: kelStatusOverflow where finite operands give an
 * infinite part; kelStatusDomain, with invalid raised, where an operand without a NaN gives a NaN part (an infinite
 * angle). A part below the normal range is no warning. Accuracy: A24 within 0.51 ulp and A53 within 1 ulp in each part,
 * as long as the part is a normal number; the others within 2^-bits of the suffix, relative to the absolute value of
 * the result. Any finite number may be an angle. */

/** dst[i] = the exponential of src[i]: e^x cos y + i e^x sin y. An e^x beyond the range is no overflow where its
 * product with the cosine or sine is not. */
KELVM_API kelStatus kelsExp_32fc_A11(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsExp_32fc_A21(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsExp_32fc_A24(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsExp_64fc_A26(const Complex64f* src, Complex64f* dst, int len);
KELVM_API kelStatus kelsExp_64fc_A50(const Complex64f* src, Complex64f* dst, int len);
KELVM_API kelStatus kelsExp_64fc_A53(const Complex64f* src, Complex64f* dst, int len);

/** dst[i] = the hyperbolic sine of src[i]: sinh x cos y + i cosh x sin y. */
KELVM_API kelStatus kelsSinh_32fc_A11(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsSinh_32fc_A21(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsSinh_32fc_A24(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsSinh_64fc_A26(const Complex64f* src, Complex64f* dst, int len);
KELVM_API kelStatus kelsSinh_64fc_A50(const Complex64f* src, Complex64f* dst, int len);
KELVM_API kelStatus kelsSinh_64fc_A53(const Complex64f* src, Complex64f* dst, int len);

/** dst[i] = the hyperbolic cosine of src[i]: cosh x cos y + i sinh x sin y. */
KELVM_API kelStatus kelsCosh_32fc_A11(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsCosh_32fc_A21(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsCosh_32fc_A24(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsCosh_64fc_A26(const Complex64f* src, Complex64f* dst, int len);
KELVM_API kelStatus kelsCosh_64fc_A50(const Complex64f* src, Complex64f* dst, int len);
KELVM_API kelStatus kelsCosh_64fc_A53(const Complex64f* src, Complex64f* dst, int len);

/** dst[i] = the sine of src[i]: sin x cosh y + i cos x sinh y, the bits of -i sinh(iz). */
KELVM_API kelStatus kelsSin_32fc_A11(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsSin_32fc_A21(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsSin_32fc_A24(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsSin_64fc_A26(const Complex64f* src, Complex64f* dst, int len);
KELVM_API kelStatus kelsSin_64fc_A50(const Complex64f* src, Complex64f* dst, int len);
KELVM_API kelStatus kelsSin_64fc_A53(const Complex64f* src, Complex64f* dst, int len);

/** dst[i] = the cosine of src[i]: cos x cosh y - i sin x sinh y, the bits of cosh(iz). */
KELVM_API kelStatus kelsCos_32fc_A11(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsCos_32fc_A21(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsCos_32fc_A24(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsCos_64fc_A26(const Complex64f* src, Complex64f* dst, int len);
KELVM_API kelStatus kelsCos_64fc_A50(const Complex64f* src, Complex64f* dst, int len);
KELVM_API kelStatus kelsCos_64fc_A53(const Complex64f* src, Complex64f* dst, int len);

/** dst[i] = the hyperbolic tangent of src[i]. Real part +-1 and imaginary part a zero where the real part of src[i] is
 * infinite, whatever the imaginary one. */
KELVM_API kelStatus kelsTanh_32fc_A11(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsTanh_32fc_A21(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsTanh_32fc_A24(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsTanh_64fc_A26(const Complex64f* src, Complex64f* dst, int len);
KELVM_API kelStatus kelsTanh_64fc_A50(const Complex64f* src, Complex64f* dst, int len);
KELVM_API kelStatus kelsTanh_64fc_A53(const Complex64f* src, Complex64f* dst, int len);

/** dst[i] = the tangent of src[i], the bits of -i tanh(iz). */
KELVM_API kelStatus kelsTan_32fc_A11(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsTan_32fc_A21(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsTan_32fc_A24(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsTan_64fc_A26(const Complex64f* src, Complex64f* dst, int len);
KELVM_API kelStatus kelsTan_64fc_A50(const Complex64f* src, Complex64f* dst, int len);
KELVM_API kelStatus kelsTan_64fc_A53(const Complex64f* src, Complex64f* dst, int len);

/* Inverse circular and hyperbolic functions. Special values as C's Annex G has them (casinh, cacos, cacosh, catanh);
 * asin z and atan z are -i asinh(iz) and -i atanh(iz). NaN parts of results are the default NaN, without a warning. The
 * functions are odd, but acos and acosh, and all commute with conjugation, bit for bit. */

/** dst[i] = the inverse sine of src[i], real part in [-pi/2, pi/2]. Cuts along the real axis beyond -1 and 1,
 * continuous from above where the imaginary part is +0 and from below where it is -0. Bit for bit -i asinh(i z). No
 * warnings. Each part within 0.501 ulp (A24) and 0.55 ulp (A53), also next to the cuts and the branch points; the
 * others within 2^-bits of the suffix, relative to the absolute value of the result. */
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

/** dst[i] = the inverse hyperbolic sine of src[i], imaginary part in [-pi/2, pi/2]. Cuts along the imaginary axis
 * beyond -i and i, the sign of a zero real part telling the sides apart. Accuracy as Asin's. No warnings. */
KELVM_API kelStatus kelsAsinh_32fc_A11(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsAsinh_32fc_A21(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsAsinh_32fc_A24(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsAsinh_64fc_A26(const Complex64f* src, Complex64f* dst, int len);
KELVM_API kelStatus kelsAsinh_64fc_A50(const Complex64f* src, Complex64f* dst, int len);
KELVM_API kelStatus kelsAsinh_64fc_A53(const Complex64f* src, Complex64f* dst, int len);

/** dst[i] = the inverse hyperbolic cosine of src[i]: i acos(z) or -i acos(z), bit for bit, the one whose real part is
 * not negative. Cut along the real axis below 1, the sign of a zero imaginary part telling the sides apart. Accuracy as
 * Asin's. No warnings. */
KELVM_API kelStatus kelsAcosh_32fc_A11(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsAcosh_32fc_A21(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsAcosh_32fc_A24(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsAcosh_64fc_A26(const Complex64f* src, Complex64f* dst, int len);
KELVM_API kelStatus kelsAcosh_64fc_A50(const Complex64f* src, Complex64f* dst, int len);
KELVM_API kelStatus kelsAcosh_64fc_A53(const Complex64f* src, Complex64f* dst, int len);

/** dst[i] = the inverse tangent of src[i], real part in [-pi/2, pi/2]. Cuts along the imaginary axis beyond -i and i,
 * the sign of a zero real part telling the sides apart. Bit for bit -i atanh(i z). Warning: kelStatusSingularity at -i
 * and i. Accuracy as Asin's. */
KELVM_API kelStatus kelsAtan_32fc_A11(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsAtan_32fc_A21(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsAtan_32fc_A24(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsAtan_64fc_A26(const Complex64f* src, Complex64f* dst, int len);
KELVM_API kelStatus kelsAtan_64fc_A50(const Complex64f* src, Complex64f* dst, int len);
KELVM_API kelStatus kelsAtan_64fc_A53(const Complex64f* src, Complex64f* dst, int len);

/** dst[i] = the inverse hyperbolic tangent of src[i], imaginary part in [-pi/2, pi/2]. Cuts along the real axis beyond
 * -1 and 1, the sign of a zero imaginary part telling the sides apart. Warning: kelStatusSingularity at -1 and 1, where
 * the real part is infinite. Accuracy as Asin's. */
KELVM_API kelStatus kelsAtanh_32fc_A11(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsAtanh_32fc_A21(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsAtanh_32fc_A24(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsAtanh_64fc_A26(const Complex64f* src, Complex64f* dst, int len);
KELVM_API kelStatus kelsAtanh_64fc_A50(const Complex64f* src, Complex64f* dst, int len);
KELVM_API kelStatus kelsAtanh_64fc_A53(const Complex64f* src, Complex64f* dst, int len);

/* Logarithms and powers. */

/** dst[i] = the natural logarithm of src[i]: ln |z| + i angle(z), the angle in [-pi, pi] with the sign of the imaginary
 * part, that of a zero too, which decides the side of the cut along the negative real axis. Infinities and NaNs as
 * clog in Annex G. kelStatusSingularity at 0, which gives -inf and the angle of the zeros' signs. A24, A53: each part
 * within 0.55 ulp, next to the unit circle too; the others within 2^-bits of the suffix, relative to the absolute value
 * of the result. */
KELVM_API kelStatus kelsLn_32fc_A11(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsLn_32fc_A21(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsLn_32fc_A24(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsLn_64fc_A26(const Complex64f* src, Complex64f* dst, int len);
KELVM_API kelStatus kelsLn_64fc_A50(const Complex64f* src, Complex64f* dst, int len);
KELVM_API kelStatus kelsLn_64fc_A53(const Complex64f* src, Complex64f* dst, int len);

/** dst[i] = the decimal logarithm of src[i], ln z / ln 10. Everything else as Ln. */
KELVM_API kelStatus kelsLog10_32fc_A11(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsLog10_32fc_A21(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsLog10_32fc_A24(const Complex32f* src, Complex32f* dst, int len);
KELVM_API kelStatus kelsLog10_64fc_A26(const Complex64f* src, Complex64f* dst, int len);
KELVM_API kelStatus kelsLog10_64fc_A50(const Complex64f* src, Complex64f* dst, int len);
KELVM_API kelStatus kelsLog10_64fc_A53(const Complex64f* src, Complex64f* dst, int len);

/** dst[i] = src1[i] to the power src2[i], e^(w ln z) with the principal logarithm. z^0 = 1 for every z; 0^w = 0 where
 * the real part of w is positive. A NaN operand otherwise gives NaN parts and no warning. A base on the positive
 * real axis, zero and infinity included, and a real exponent give the real part that Pow of real numbers gives, and an
 * imaginary part of zero. Warnings: kelStatusSingularity for 0 and a negative real exponent; kelStatusOverflow where
 * finite operands give an infinite part; kelStatusDomain where operands without a NaN give NaN parts (0 and an exponent
 * that is not real with a real part not positive; operands with an infinity whose power has no direction). A24, A53:
 * within 1 ulp in each part; the others within 2^-bits of the suffix, relative to the absolute value of the result.
 * That holds for any w; elements with |w ln z| above 2^34 take long, the longer the larger it is. */
KELVM_API kelStatus kelsPow_32fc_A11(const Complex32f* src1, const Complex32f* src2, Complex32f* dst, int len);
KELVM_API kelStatus kelsPow_32fc_A21(const Complex32f* src1, const Complex32f* src2, Complex32f* dst, int len);
KELVM_API kelStatus kelsPow_32fc_A24(const Complex32f* src1, const Complex32f* src2, Complex32f* dst, int len);
KELVM_API kelStatus kelsPow_64fc_A26(const Complex64f* src1, const Complex64f* src2, Complex64f* dst, int len);
KELVM_API kelStatus kelsPow_64fc_A50(const Complex64f* src1, const Complex64f* src2, Complex64f* dst, int len);
KELVM_API kelStatus kelsPow_64fc_A53(const Complex64f* src1, const Complex64f* src2, Complex64f* dst, int len);

/** dst[i] = src[i] to the power value: the bits of Pow with that exponent for every element. */
KELVM_API kelStatus kelsPowx_32fc_A11(const Complex32f* src, Complex32f value, Complex32f* dst, int len);
KELVM_API kelStatus kelsPowx_32fc_A21(const Complex32f* src, Complex32f value, Complex32f* dst, int len);
KELVM_API kelStatus kelsPowx_32fc_A24(const Complex32f* src, Complex32f value, Complex32f* dst, int len);
KELVM_API kelStatus kelsPowx_64fc_A26(const Complex64f* src, Complex64f value, Complex64f* dst, int len);
KELVM_API kelStatus kelsPowx_64fc_A50(const Complex64f* src, Complex64f value, Complex64f* dst, int len);
KELVM_API kelStatus kelsPowx_64fc_A53(const Complex64f* src, Complex64f value, Complex64f* dst, int len);

KELVM_END_DECLARATIONS

#endif
