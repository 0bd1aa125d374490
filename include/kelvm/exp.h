/* SPDX-License-Identifier: MIT */
/* Exponential, logarithm and power. Conventions, status codes, aliasing: kelvm/types.h. */
#ifndef KELVM_EXP_H
#define KELVM_EXP_H

#include "kelvm/types.h"

KELVM_BEGIN_DECLARATIONS

/** dst[i] = e^src[i], for every real number.
 *
 * +inf gives +inf, -inf gives +0, both without a warning.
 * Warnings: kelStatusOverflow where the result is beyond the largest finite number (result +inf), kelStatusUnderflow
 * where it is below the smallest normal number (result subnormal or +0).
 * Flags: results that are stored constants raise none: the infinities and zeros of the double functions, and of 32f_A11
 * beyond |x| = 160. All others raise overflow or underflow with their warning, but for a subnormal result that is
 * exact.
 * NaN: the 64f_A53 function gives the NaN with every bit set, 32f_A11 the argument unchanged (also a signalling NaN),
 * the others the argument quieted. In these two a signalling NaN raises nothing.
 * 64f_A26 gives +inf without a warning from 709.7773 on, where the exact result is still finite, up to 709.7827.
 * 32f_A11 warns of underflow from -87.33655 on down.
 *
 * Error: 64f_A53 at most 0.53 ulp, 32f_A24 0.574 ulp (subnormal results 1 ulp); the others 2^-bits of the suffix,
 * relative. */
KELVM_API kelStatus kelsExp_32f_A11(const float* src, float* dst, int len);
KELVM_API kelStatus kelsExp_32f_A21(const float* src, float* dst, int len);
KELVM_API kelStatus kelsExp_32f_A24(const float* src, float* dst, int len);
KELVM_API kelStatus kelsExp_64f_A26(const double* src, double* dst, int len);
KELVM_API kelStatus kelsExp_64f_A50(const double* src, double* dst, int len);
KELVM_API kelStatus kelsExp_64f_A53(const double* src, double* dst, int len);

/* The logarithms, Expm1 and the powers: a NaN comes back quiet and without a warning. Error: 64f_A53 at most 0.52 ulp;
 * 32f_A24 correctly rounded (Pow, Powx 0.5001 ulp); the others 2^-bits of the suffix, relative. A destination may be a
 * source. */

/** dst[i] = ln(src[i]), for src[i] > 0; exact at 1 (+0) and +inf.
 * Warnings: kelStatusSingularity for +-0 (result -inf), kelStatusDomain below zero, -inf included (result NaN). */
KELVM_API kelStatus kelsLn_32f_A11(const float* src, float* dst, int len);
KELVM_API kelStatus kelsLn_32f_A21(const float* src, float* dst, int len);
KELVM_API kelStatus kelsLn_32f_A24(const float* src, float* dst, int len);
KELVM_API kelStatus kelsLn_64f_A26(const double* src, double* dst, int len);
KELVM_API kelStatus kelsLn_64f_A50(const double* src, double* dst, int len);
KELVM_API kelStatus kelsLn_64f_A53(const double* src, double* dst, int len);

/** dst[i] = log10(src[i]); domain, special values and warnings as for the natural logarithm. Powers of ten give the
 * exact integer in 64f_A53 and 32f_A24. */
KELVM_API kelStatus kelsLog10_32f_A11(const float* src, float* dst, int len);
KELVM_API kelStatus kelsLog10_32f_A21(const float* src, float* dst, int len);
KELVM_API kelStatus kelsLog10_32f_A24(const float* src, float* dst, int len);
KELVM_API kelStatus kelsLog10_64f_A26(const double* src, double* dst, int len);
KELVM_API kelStatus kelsLog10_64f_A50(const double* src, double* dst, int len);
KELVM_API kelStatus kelsLog10_64f_A53(const double* src, double* dst, int len);

/** dst[i] = ln(1 + src[i]), for src[i] > -1, accurate near 0 too; +-0, tiny values and +inf are kept.
 * Warnings: kelStatusSingularity at -1 (result -inf), kelStatusDomain below, -inf included (result NaN). */
KELVM_API kelStatus kelsLog1p_32f_A11(const float* src, float* dst, int len);
KELVM_API kelStatus kelsLog1p_32f_A21(const float* src, float* dst, int len);
KELVM_API kelStatus kelsLog1p_32f_A24(const float* src, float* dst, int len);
KELVM_API kelStatus kelsLog1p_64f_A26(const double* src, double* dst, int len);
KELVM_API kelStatus kelsLog1p_64f_A50(const double* src, double* dst, int len);
KELVM_API kelStatus kelsLog1p_64f_A53(const double* src, double* dst, int len);

/** dst[i] = e^src[i] - 1, accurate near 0 too; +-0, tiny values and +inf are kept, -inf gives -1.
 * Warning: kelStatusOverflow where the result is beyond the largest finite number (result +inf). */
KELVM_API kelStatus kelsExpm1_32f_A11(const float* src, float* dst, int len);
KELVM_API kelStatus kelsExpm1_32f_A21(const float* src, float* dst, int len);
KELVM_API kelStatus kelsExpm1_32f_A24(const float* src, float* dst, int len);
KELVM_API kelStatus kelsExpm1_64f_A26(const double* src, double* dst, int len);
KELVM_API kelStatus kelsExpm1_64f_A50(const double* src, double* dst, int len);
KELVM_API kelStatus kelsExpm1_64f_A53(const double* src, double* dst, int len);

/** dst[i] = src1[i]^src2[i]. Special cases as in Annex F of ISO C: a zero exponent and a base of 1 give 1, also with a
 * NaN; a negative base has powers with integer exponents only. A power that is a number of the type is exact.
 * Warnings: kelStatusSingularity for a zero base and a finite negative exponent (result infinite), kelStatusDomain for
 * a negative finite base and a finite exponent that is no integer (result NaN), kelStatusOverflow where finite operands
 * give an infinity, kelStatusUnderflow where the result is below the smallest normal number and not exactly a zero of
 * the special cases. */
KELVM_API kelStatus kelsPow_32f_A11(const float* src1, const float* src2, float* dst, int len);
KELVM_API kelStatus kelsPow_32f_A21(const float* src1, const float* src2, float* dst, int len);
KELVM_API kelStatus kelsPow_32f_A24(const float* src1, const float* src2, float* dst, int len);
KELVM_API kelStatus kelsPow_64f_A26(const double* src1, const double* src2, double* dst, int len);
KELVM_API kelStatus kelsPow_64f_A50(const double* src1, const double* src2, double* dst, int len);
KELVM_API kelStatus kelsPow_64f_A53(const double* src1, const double* src2, double* dst, int len);

/** dst[i] = src[i]^value: the same bits and warnings as Pow with an array of equal exponents. */
KELVM_API kelStatus kelsPowx_32f_A11(const float* src, float value, float* dst, int len);
KELVM_API kelStatus kelsPowx_32f_A21(const float* src, float value, float* dst, int len);
KELVM_API kelStatus kelsPowx_32f_A24(const float* src, float value, float* dst, int len);
KELVM_API kelStatus kelsPowx_64f_A26(const double* src, double value, double* dst, int len);
KELVM_API kelStatus kelsPowx_64f_A50(const double* src, double value, double* dst, int len);
KELVM_API kelStatus kelsPowx_64f_A53(const double* src, double value, double* dst, int len);

KELVM_END_DECLARATIONS

#endif
