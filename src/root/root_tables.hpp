// Polynomials of inverse roots. Made by tools/tables/root.py, run by tools/tables/regenerate: do not edit.
// Of each fit: the interval; what the errors are relative to, which is the weight; the error of the fit with these
// coefficients; a bound of that of its evaluation, by Horner's rule without fused steps.
// clang-format off
#pragma once

#include "simd/isa.hpp"

namespace kelvm::inline KELVM_BUILD {

// (1 - d)^(-1/2), |d| <= 0.0682; relative errors: fit 2^-20.3, evaluation 2^-52.8
inline constexpr double inverse_sqrt_20[] = {
    0x1.ffffe71241823p-1,
    0x1.ffff97396e14bp-2,
    0x1.814e98b513559p-2,
    0x1.41703e1d2b091p-2};

// (1 - d)^(-1/2), |d| <= 0.0682; relative errors: fit 2^-30.3, evaluation 2^-52.8
inline constexpr double inverse_sqrt_26[] = {
    0x1.0000000311737p+0,
    0x1.00000012dcf79p-1,
    0x1.7fff469d09a63p-2,
    0x1.3ffefb63bd491p-2,
    0x1.199e89477f023p-2,
    0x1.fb78c3a85dd1ap-3};

// (1 - d)^(-1/3), |d| <= 0.1021; relative errors: fit 2^-14.3, evaluation 2^-23.8
inline constexpr float inverse_cbrt_11[] = {
    0x1.ffffbp-1f,
    0x1.56b9d2p-2f,
    0x1.ca5e44p-3f};

// (1 - d)^(-1/3), |d| <= 0.1021; relative errors: fit 2^-18.9, evaluation 2^-23.8
inline constexpr float inverse_cbrt_19_float[] = {
    0x1.ffffbep-1f,
    0x1.55540ep-2f,
    0x1.ca35p-3f,
    0x1.657d86p-3f};

// (1 - d)^(-1/3), |d| <= 0.1021; relative errors: fit 2^-23.3, evaluation 2^-23.8
inline constexpr float inverse_cbrt_21[] = {
    0x1p+0f,
    0x1.555436p-2f,
    0x1.c71972p-3f,
    0x1.655596p-3f,
    0x1.2a6ac6p-3f};

// (1 - d)^(-1/3), |d| <= 0.1021; relative errors: fit 2^-14.3, evaluation 2^-52.8
inline constexpr double inverse_cbrt_14[] = {
    0x1.ffffb062c3554p-1,
    0x1.56b9d1c1ee24dp-2,
    0x1.ca5d7dbc57db8p-3};

// (1 - d)^(-1/3), |d| <= 0.1021; relative errors: fit 2^-18.9, evaluation 2^-52.8
inline constexpr double inverse_cbrt_19[] = {
    0x1.ffffbdade3d23p-1,
    0x1.55540d789dafcp-2,
    0x1.ca35a33239591p-3,
    0x1.657e08eb1e557p-3};

// (1 - d)^(-1/3), |d| <= 0.1021; relative errors: fit 2^-27.8, evaluation 2^-52.8
inline constexpr double inverse_cbrt_26[] = {
    0x1.00000011219b5p+0,
    0x1.55555657bd4f8p-2,
    0x1.c718d703195cfp-3,
    0x1.61f41dfa4fc59p-3,
    0x1.2a91ab8e7d38dp-3,
    0x1.0396321be05bap-3};

// (1 - d)^(-2/3), |d| <= 0.1021; relative errors: fit 2^-12.8, evaluation 2^-23.8
inline constexpr float cbrt_11[] = {
    0x1.ffff8ep-1f,
    0x1.57530ap-1f,
    0x1.1e9a7cp-1f};

// (1 - d)^(-2/3), |d| <= 0.1021; relative errors: fit 2^-25.7, evaluation 2^-23.7
inline constexpr float cbrt_21[] = {
    0x1p+0f,
    0x1.555556p-1f,
    0x1.1c6f42p-1f,
    0x1.f9a71cp-2f,
    0x1.d5908ap-2f,
    0x1.b6f0a2p-2f};

// (1 - d)^(-2/3), |d| <= 0.1021; relative errors: fit 2^-30.4, evaluation 2^-52.7
inline constexpr double cbrt_26[] = {
    0x1.ffffffffd214bp-1,
    0x1.555556f12f64ep-1,
    0x1.1c71c9dcf33eap-1,
    0x1.f9a432f21481dp-2,
    0x1.cf7e5c97bbf41p-2,
    0x1.b7d2d69fe53ddp-2,
    0x1.a017f85ef47ccp-2};

} // namespace kelvm::inline KELVM_BUILD
