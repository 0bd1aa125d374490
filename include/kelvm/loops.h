/* SPDX-License-Identifier: MIT */
/*
 * Scalar functions with variants for registers: in a loop over double kelvm_exp(double) g++ calls the variant of its
 * vector length, without -ffast-math and with IEEE arithmetic elsewhere. In the libraries kelvm_simd and, less accurate
 * and faster, kelvm_simd_fast; the linker's choice. For C and C++.
 *
 *   for (int i = 0; i < n; ++i) y[i] = a * kelvm_exp(x[i]);      g++ -O3, or -fopenmp-simd and #pragma omp simd
 *
 * Results, domains, special values and IEEE flags are those of the array functions, whose headers describe them: of
 * kelsExp_64f_A53 for kelvm_exp, kelsExp_32f_A24 for kelvm_expf; in kelvm_simd_fast of the A50 and A21 functions. There
 * is no status. The bits are those of the array functions in the build of the register's width, SSE4.1 for 16 bytes,
 * AVX2 for 32, AVX-512 for 64; in 32 bytes without AVX2 they are those for SSE4.1. An element that is computed alone,
 * at the end of a loop or where the compiler did not vectorise it, has those of AVX2 where the processor has that.
 *
 * The floating-point mode is the caller's. Accuracy is that of the array functions in round-to-nearest; with
 * flush-to-zero or denormals-are-zero, arguments and results below the normal range are zeros.
 *
 * Compilers without the attribute, clang among them, call the scalar functions.
 */
#ifndef KELVM_LOOPS_H
#define KELVM_LOOPS_H

#if defined(__GNUC__) && !defined(__clang__)
#  define KELVM_LOOP_FUNCTION __attribute__((__simd__, __const__, __nothrow__, __leaf__))
#  define KELVM_LOOP_TWO_RESULTS __attribute__((__simd__("notinbranch"), __nothrow__, __leaf__))
#elif defined(__clang__)
#  define KELVM_LOOP_FUNCTION __attribute__((__const__, __nothrow__, __leaf__))
#  define KELVM_LOOP_TWO_RESULTS __attribute__((__nothrow__, __leaf__))
#else
#  define KELVM_LOOP_FUNCTION
#  define KELVM_LOOP_TWO_RESULTS
#endif

#ifdef __cplusplus
extern "C" {
#endif

/** e^x: kelsExp. */
KELVM_LOOP_FUNCTION double kelvm_exp(double x);
KELVM_LOOP_FUNCTION float kelvm_expf(float x);
/** e^x - 1: kelsExpm1. */
KELVM_LOOP_FUNCTION double kelvm_expm1(double x);
KELVM_LOOP_FUNCTION float kelvm_expm1f(float x);
/** Natural logarithm: kelsLn. */
KELVM_LOOP_FUNCTION double kelvm_log(double x);
KELVM_LOOP_FUNCTION float kelvm_logf(float x);
/** Logarithm to base 10: kelsLog10. */
KELVM_LOOP_FUNCTION double kelvm_log10(double x);
KELVM_LOOP_FUNCTION float kelvm_log10f(float x);
/** ln(1 + x): kelsLog1p. */
KELVM_LOOP_FUNCTION double kelvm_log1p(double x);
KELVM_LOOP_FUNCTION float kelvm_log1pf(float x);
/** Sine, x in radians: kelsSin. */
KELVM_LOOP_FUNCTION double kelvm_sin(double x);
KELVM_LOOP_FUNCTION float kelvm_sinf(float x);
/** Cosine, x in radians: kelsCos. */
KELVM_LOOP_FUNCTION double kelvm_cos(double x);
KELVM_LOOP_FUNCTION float kelvm_cosf(float x);
/** Tangent, x in radians: kelsTan. */
KELVM_LOOP_FUNCTION double kelvm_tan(double x);
KELVM_LOOP_FUNCTION float kelvm_tanf(float x);
/** Arc sine, |x| <= 1: kelsAsin. */
KELVM_LOOP_FUNCTION double kelvm_asin(double x);
KELVM_LOOP_FUNCTION float kelvm_asinf(float x);
/** Arc cosine, |x| <= 1: kelsAcos. */
KELVM_LOOP_FUNCTION double kelvm_acos(double x);
KELVM_LOOP_FUNCTION float kelvm_acosf(float x);
/** Arc tangent: kelsAtan. */
KELVM_LOOP_FUNCTION double kelvm_atan(double x);
KELVM_LOOP_FUNCTION float kelvm_atanf(float x);
/** Hyperbolic sine: kelsSinh. */
KELVM_LOOP_FUNCTION double kelvm_sinh(double x);
KELVM_LOOP_FUNCTION float kelvm_sinhf(float x);
/** Hyperbolic cosine: kelsCosh. */
KELVM_LOOP_FUNCTION double kelvm_cosh(double x);
KELVM_LOOP_FUNCTION float kelvm_coshf(float x);
/** Hyperbolic tangent: kelsTanh. */
KELVM_LOOP_FUNCTION double kelvm_tanh(double x);
KELVM_LOOP_FUNCTION float kelvm_tanhf(float x);
/** Inverse hyperbolic sine: kelsAsinh. */
KELVM_LOOP_FUNCTION double kelvm_asinh(double x);
KELVM_LOOP_FUNCTION float kelvm_asinhf(float x);
/** Inverse hyperbolic cosine, x >= 1: kelsAcosh. */
KELVM_LOOP_FUNCTION double kelvm_acosh(double x);
KELVM_LOOP_FUNCTION float kelvm_acoshf(float x);
/** Inverse hyperbolic tangent, |x| <= 1: kelsAtanh. */
KELVM_LOOP_FUNCTION double kelvm_atanh(double x);
KELVM_LOOP_FUNCTION float kelvm_atanhf(float x);
/** Cube root: kelsCbrt. */
KELVM_LOOP_FUNCTION double kelvm_cbrt(double x);
KELVM_LOOP_FUNCTION float kelvm_cbrtf(float x);
/** 1 / cube root: kelsInvCbrt. */
KELVM_LOOP_FUNCTION double kelvm_rcbrt(double x);
KELVM_LOOP_FUNCTION float kelvm_rcbrtf(float x);
/** 1 / square root, x >= 0: kelsInvSqrt. */
KELVM_LOOP_FUNCTION double kelvm_rsqrt(double x);
KELVM_LOOP_FUNCTION float kelvm_rsqrtf(float x);
/** x^(2/3): kelsPow2o3. */
KELVM_LOOP_FUNCTION double kelvm_pow2o3(double x);
KELVM_LOOP_FUNCTION float kelvm_pow2o3f(float x);
/** x^(3/2), x >= 0: kelsPow3o2. */
KELVM_LOOP_FUNCTION double kelvm_pow3o2(double x);
KELVM_LOOP_FUNCTION float kelvm_pow3o2f(float x);
/** Error function: kelsErf. */
KELVM_LOOP_FUNCTION double kelvm_erf(double x);
KELVM_LOOP_FUNCTION float kelvm_erff(float x);
/** 1 - erf(x): kelsErfc. */
KELVM_LOOP_FUNCTION double kelvm_erfc(double x);
KELVM_LOOP_FUNCTION float kelvm_erfcf(float x);
/** Inverse of erf, |x| <= 1: kelsErfInv. */
KELVM_LOOP_FUNCTION double kelvm_erf_inv(double x);
KELVM_LOOP_FUNCTION float kelvm_erf_invf(float x);
/** Inverse of erfc, 0 <= x <= 2: kelsErfcInv. */
KELVM_LOOP_FUNCTION double kelvm_erfc_inv(double x);
KELVM_LOOP_FUNCTION float kelvm_erfc_invf(float x);
/** Normal distribution function: kelsCdfNorm. */
KELVM_LOOP_FUNCTION double kelvm_cdf_norm(double x);
KELVM_LOOP_FUNCTION float kelvm_cdf_normf(float x);
/** Inverse of cdf_norm, 0 <= x <= 1: kelsCdfNormInv. */
KELVM_LOOP_FUNCTION double kelvm_cdf_norm_inv(double x);
KELVM_LOOP_FUNCTION float kelvm_cdf_norm_invf(float x);
/** x^y: kelsPow. */
KELVM_LOOP_FUNCTION double kelvm_pow(double x, double y);
KELVM_LOOP_FUNCTION float kelvm_powf(float x, float y);
/** Angle of the point (x, y): kelsAtan2. */
KELVM_LOOP_FUNCTION double kelvm_atan2(double y, double x);
KELVM_LOOP_FUNCTION float kelvm_atan2f(float y, float x);
/** Square root of x^2 + y^2: kelsHypot. */
KELVM_LOOP_FUNCTION double kelvm_hypot(double x, double y);
KELVM_LOOP_FUNCTION float kelvm_hypotf(float x, float y);

/** Sine and cosine of x in radians, to *sine and *cosine: kelsSinCos. For loops with #pragma omp simd. */
KELVM_LOOP_TWO_RESULTS void kelvm_sincos(double x, double* sine, double* cosine);
KELVM_LOOP_TWO_RESULTS void kelvm_sincosf(float x, float* sine, float* cosine);

#ifdef __cplusplus
}
#endif

#endif
