// Fits of circular functions. Made by tools/tables/trig_fits.py, run by tools/tables/regenerate: do not edit.
// Of each fit: the interval; what the errors are relative to, which is the weight; the error of the fit with these
// coefficients; a bound of that of its evaluation, by Horner's rule without fused steps.
// clang-format off
#pragma once

#include "simd/isa.hpp"

namespace kelvm::inline KELVM_BUILD {

// sin r / r by powers of r^2, |r| <= pi / 2; relative errors: fit 2^-27.4, evaluation 2^-51.7
inline constexpr double sine_half_pi[] = {
    0x1.ffffffd1e373ep-1,
    -0x1.555547d3b594p-3,
    0x1.110e77444faa3p-7,
    -0x1.9f638d54c3a66p-13,
    0x1.5d2e6929e93b5p-19};

// (sin r - r) / r^3 by powers of r^2, |r| <= pi / 2, 1 at pi / 2; errors relative to sin r: fit 2^-19.1, evaluation
// 2^-24.4
inline constexpr float sine_half_pi_single[] = {
    -0x1.55510cp-3f,
    0x1.1070ap-7f,
    -0x1.84b79p-13f};

// sin(pi t) / t by powers of t^2, |t| <= 1/2; relative errors: fit 2^-52.3, evaluation 2^-51.7
inline constexpr double sine_half_turn[] = {
    0x1.921fb54442d17p+1,
    -0x1.4abbce625bd48p+2,
    0x1.466bc67750871p+1,
    -0x1.32d2cce1553ddp-1,
    0x1.5078323ce4f9ap-4,
    -0x1.e3061f4e089dp-8,
    0x1.e89c21f1247f4p-12,
    -0x1.6254650e8704cp-16};

// (tan r - r) / r^3 by powers of r^2, |r| <= pi / 64; errors relative to tan r: fit 2^-68.5, evaluation 2^-63.2
inline constexpr double tangent_5[] = {
    0x1.5555555555555p-2,
    0x1.1111111111702p-3,
    0x1.ba1ba1b87593ep-5,
    0x1.664f2cf14f0a9p-6,
    0x1.230ccb64e12a7p-7};

// (tan r - r) / r^3 by powers of r^2, |r| <= pi / 64; errors relative to tan r: fit 2^-59.1, evaluation 2^-63.2
inline constexpr double tangent_4[] = {
    0x1.55555555553dap-2,
    0x1.11111113fa85cp-3,
    0x1.ba1b68d1bc8a1p-5,
    0x1.672a5db0428a1p-6};

// (tan r - r) / r^3 by powers of r^2, |r| <= pi / 64; errors relative to tan r: fit 2^-47.0, evaluation 2^-63.2
inline constexpr double tangent_3[] = {
    0x1.555555564e28bp-2,
    0x1.1110fdfba604cp-3,
    0x1.baf09b4a7a059p-5};

// tan r / r by powers of r^2, |r| <= pi / 4; errors relative to tan r: fit 2^-55.2, evaluation 2^-51.0
inline constexpr double tangent_50_numerator[] = {
    0x1p+0,
    -0x1.06b90b62da7bfp-3,
    0x1.6fc3db6a62cd3p-9,
    -0x1.f6284cf3bc304p-18};

// its denominator
inline constexpr double tangent_50_denominator[] = {
    0x1p+0,
    -0x1.d8b1db06c2911p-2,
    0x1.7e79d85e22aadp-6,
    -0x1.b51e7c60b0956p-13};

// tan r / r by powers of r^2, |r| <= pi / 4; errors relative to tan r: fit 2^-35.1, evaluation 2^-51.0
inline constexpr double tangent_26_numerator[] = {
    0x1p+0,
    -0x1.c81ce5d986d8p-4,
    0x1.19bd98b4d01b6p-10};

// its denominator
inline constexpr double tangent_26_denominator[] = {
    0x1p+0,
    -0x1.c75c8eb716869p-2,
    0x1.05ab8cb67e2ebp-6};

// tan r / r by powers of r^2, |r| <= pi / 4; errors relative to tan r: fit 2^-25.1, evaluation 2^-22.0
inline constexpr float tangent_21_numerator[] = {
    0x1p+0f,
    -0x1.8851fp-4f};

// its denominator
inline constexpr float tangent_21_denominator[] = {
    0x1p+0f,
    -0x1.b769f2p-2f,
    0x1.3e28fcp-7f};

// tan r / r by powers of r^2, |r| <= pi / 4; errors relative to tan r: fit 2^-17.0, evaluation 2^-22.2
inline constexpr float tangent_11_numerator[] = {
    0x1p+0f,
    -0x1.1814ap-4f};

// its denominator
inline constexpr float tangent_11_denominator[] = {
    0x1p+0f,
    -0x1.9b3be6p-2f};

} // namespace kelvm::inline KELVM_BUILD
