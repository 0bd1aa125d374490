// Tables and coefficients of the exponential core. Made by tools/tables/exp_core.py, run by tools/tables/regenerate: do
// not edit.
// Of each fit: the interval; what the errors are relative to, which is the weight; the error of the fit with these
// coefficients; a bound of that of its evaluation, by Horner's rule without fused steps.
// clang-format off
#pragma once

#include "simd/isa.hpp"

namespace kelvm::inline KELVM_BUILD::exp_core_tables {

inline constexpr double per_step = 0x1.71547652b82fep+5;
inline constexpr double step_hi = 0x1.62e42fef8p-6;
inline constexpr double step_lo = 0x1.1cf79abc9e3b4p-41;

// 2^(j/32): its upper 26 bits and the rest
alignas(64) inline constexpr double exp2_short_and_rest[32][2] = {
{0x1p+0,0x0p+0},
{0x1.059b0dp+0,0x1.8ac2ba1d73e2ap-27},
{0x1.0b55868p+0,0x1.3e6243d8a62e5p-26},
{0x1.11301dp+0,0x1.25b50a4ebbf1bp-32},
{0x1.172b838p+0,0x1.1f545eb737df2p-26},
{0x1.1d4873p+0,0x1.68b9aa7805b8p-28},
{0x1.2387a68p+0,0x1.9d588e19b07ebp-26},
{0x1.29e9dfp+0,0x1.47f7b84b09745p-26},
{0x1.306fe08p+0,0x1.18db8a96f46adp-27},
{0x1.371a73p+0,0x1.ceaa72a9c5154p-26},
{0x1.3dea648p+0,0x1.048d088d6d049p-26},
{0x1.44e086p+0,0x1.8624b40c4dbdp-30},
{0x1.4bfdadp+0,0x1.4d8a89c750e5fp-26},
{0x1.5342b5p+0,0x1.a753e077c2a0fp-26},
{0x1.5ab07d8p+0,0x1.52150a56324cp-26},
{0x1.6247ebp+0,0x1.d2ac258f87d03p-31},
{0x1.6a09e6p+0,0x1.9fcef32422cbfp-26},
{0x1.71f75e8p+0,0x1.d8bee7ba46e1ep-29},
{0x1.7a1147p+0,0x1.f580c36bea881p-27},
{0x1.8258998p+0,0x1.4cce128acf88bp-28},
{0x1.8ace54p+0,0x1.15506dadd3e2bp-27},
{0x1.93737bp+0,0x1.9b8bc9e8a0388p-29},
{0x1.9c4918p+0,0x1.51f8480e3e236p-27},
{0x1.a5503bp+0,0x1.1f12ae45a1225p-27},
{0x1.ae89f98p+0,0x1.5ad3ad5e8734dp-28},
{0x1.b7f76fp+0,0x1.7daf237553d84p-27},
{0x1.c199bd8p+0,0x1.6154a7088832cp-26},
{0x1.cb720d8p+0,0x1.3be41a4540f2fp-26},
{0x1.d5818d8p+0,0x1.3ee921c976817p-26},
{0x1.dfc973p+0,0x1.bdcdaf5cb4656p-27},
{0x1.ea4afap+0,0x1.52486cc2c7b9dp-27},
{0x1.f507658p+0,0x1.b722a033a7c26p-27},
};

// 2^(j/32)
alignas(64) inline constexpr double exp2[] = {
    0x1p+0,
    0x1.059b0d3158574p+0,
    0x1.0b5586cf9890fp+0,
    0x1.11301d0125b51p+0,
    0x1.172b83c7d517bp+0,
    0x1.1d4873168b9aap+0,
    0x1.2387a6e756238p+0,
    0x1.29e9df51fdee1p+0,
    0x1.306fe0a31b715p+0,
    0x1.371a7373aa9cbp+0,
    0x1.3dea64c123422p+0,
    0x1.44e086061892dp+0,
    0x1.4bfdad5362a27p+0,
    0x1.5342b569d4f82p+0,
    0x1.5ab07dd485429p+0,
    0x1.6247eb03a5585p+0,
    0x1.6a09e667f3bcdp+0,
    0x1.71f75e8ec5f74p+0,
    0x1.7a11473eb0187p+0,
    0x1.82589994cce13p+0,
    0x1.8ace5422aa0dbp+0,
    0x1.93737b0cdc5e5p+0,
    0x1.9c49182a3f09p+0,
    0x1.a5503b23e255dp+0,
    0x1.ae89f995ad3adp+0,
    0x1.b7f76f2fb5e47p+0,
    0x1.c199bdd85529cp+0,
    0x1.cb720dcef9069p+0,
    0x1.d5818dcfba487p+0,
    0x1.dfc97337b9b5fp+0,
    0x1.ea4afa2a490dap+0,
    0x1.f50765b6e454p+0};

// 2^(j/32), less j in the bits above 2^47
alignas(64) inline constexpr double exp2_less_row[] = {
    0x1p+0,
    0x1.fd9b0d3158574p-1,
    0x1.fb5586cf9890fp-1,
    0x1.f9301d0125b51p-1,
    0x1.f72b83c7d517bp-1,
    0x1.f54873168b9aap-1,
    0x1.f387a6e756238p-1,
    0x1.f1e9df51fdee1p-1,
    0x1.f06fe0a31b715p-1,
    0x1.ef1a7373aa9cbp-1,
    0x1.edea64c123422p-1,
    0x1.ece086061892dp-1,
    0x1.ebfdad5362a27p-1,
    0x1.eb42b569d4f82p-1,
    0x1.eab07dd485429p-1,
    0x1.ea47eb03a5585p-1,
    0x1.ea09e667f3bcdp-1,
    0x1.e9f75e8ec5f74p-1,
    0x1.ea11473eb0187p-1,
    0x1.ea589994cce13p-1,
    0x1.eace5422aa0dbp-1,
    0x1.eb737b0cdc5e5p-1,
    0x1.ec49182a3f09p-1,
    0x1.ed503b23e255dp-1,
    0x1.ee89f995ad3adp-1,
    0x1.eff76f2fb5e47p-1,
    0x1.f199bdd85529cp-1,
    0x1.f3720dcef9069p-1,
    0x1.f5818dcfba487p-1,
    0x1.f7c97337b9b5fp-1,
    0x1.fa4afa2a490dap-1,
    0x1.fd0765b6e454p-1};

// (e^r - 1 - r) / r^2 on |r| <= ln 2 / 64; errors of e^r: fit 2^-63.2, evaluation 2^-67.0
inline constexpr double exp_full[] = {
    0x1p-1,
    0x1.5555555548e7ep-3,
    0x1.555555554e3adp-5,
    0x1.11115ba81cc35p-7,
    0x1.6c17102e2dca2p-10};

// (e^r - 1 - r) / r^2 on |r| <= ln 2 / 64; errors of e^r: fit 2^-53.3, evaluation 2^-67.0
inline constexpr double exp_bits50[] = {
    0x1.ffffffffdb88p-2,
    0x1.5555555546cc1p-3,
    0x1.5555cf7ec096dp-5,
    0x1.111160a9d31d2p-7};

// (e^r - 1 - r) / r^2 on |r| <= ln 2 / 64; errors of e^r: fit 2^-42.4, evaluation 2^-67.0
inline constexpr double exp_bits40[] = {
    0x1.ffffffffd415ap-2,
    0x1.5555c7a1c93d7p-3,
    0x1.5555da7698014p-5};

// (e^r - 1 - r) / r^2 on |r| <= ln 2 / 64; errors of e^r - 1: fit 2^-66.2, evaluation 2^-60.5
inline constexpr double expm1_full[] = {
    0x1p-1,
    0x1.5555555555555p-3,
    0x1.555555554f1ebp-5,
    0x1.111111112d8ffp-7,
    0x1.6c170c02a1431p-10,
    0x1.a019984ac1502p-13};

// (e^r - 1 - r) / r^2 on |r| <= ln 2 / 64; errors of e^r - 1: fit 2^-56.1, evaluation 2^-60.5
inline constexpr double expm1_bits50[] = {
    0x1p-1,
    0x1.555555554aeedp-3,
    0x1.555555554e45cp-5,
    0x1.111156d3a15edp-7,
    0x1.6c170febe7edep-10};

// (e^r - 1 - r) / r^2 on |r| <= ln 2 / 64; errors of e^r - 1: fit 2^-46.1, evaluation 2^-60.5
inline constexpr double expm1_bits40[] = {
    0x1.ffffffffe5a05p-2,
    0x1.5555555548bedp-3,
    0x1.5555c2e2538f6p-5,
    0x1.11115c057c88ep-7};

// (e^r - 1 - r) / r^2 on |r| <= ln 2 / 64; errors of e^r - 1: fit 2^-35.5, evaluation 2^-60.5
inline constexpr double expm1_bits27[] = {
    0x1.ffffffffdd277p-2,
    0x1.5555c2478d094p-3,
    0x1.5555cfefce0dap-5};

// e^r on |r| <= ln 2 / 2; relative errors: fit 2^-34.3, evaluation 2^-51.9
inline constexpr double exp_bits33[] = {
    0x1p+0,
    0x1.00000000e7661p+0,
    0x1.00000042be3b8p-1,
    0x1.5555534b3dc4ap-3,
    0x1.555480c8e4f2ap-5,
    0x1.111310bb2cff2p-7,
    0x1.6d962d7a8342cp-10,
    0x1.9e88da4e28b99p-13};

// e^r on |r| <= ln 2 / 2; relative errors: fit 2^-28.9, evaluation 2^-51.9
inline constexpr double exp_bits27[] = {
    0x1p+0,
    0x1.0000008b4b70cp+0,
    0x1.fffffc233997ap-2,
    0x1.555417eed5d8ep-3,
    0x1.55581ccd2b5cfp-5,
    0x1.12683db45f0b3p-7,
    0x1.6aebfae11b94fp-10};

// e^r on |r| <= ln 2 / 2; relative errors: fit 2^-23.3, evaluation 2^-51.9
inline constexpr double exp_bits21[] = {
    0x1p+0,
    0x1.fffff61b692dfp-1,
    0x1.fffdc28584da4p-2,
    0x1.555a7170e02e5p-3,
    0x1.573b6c59a19e9p-5,
    0x1.0fa6374aeada5p-7};

// (cosh r - 1) / r^2 by powers of r^2, |r| <= ln 2 / 2; absolute errors: fit 2^-57.9, evaluation 2^-57.0
inline constexpr double exp_even[] = {
    0x1.000000000000cp-1,
    0x1.555555554fdd7p-5,
    0x1.6c16c18617309p-10,
    0x1.a01995843de92p-16,
    0x1.28b130875942fp-22};

// (sinh r - r) / r^3 by powers of r^2, |r| <= ln 2 / 2; relative errors: fit 2^-61.6, evaluation 2^-58.6
inline constexpr double exp_odd[] = {
    0x1.5555555555559p-3,
    0x1.111111110f641p-7,
    0x1.a01a01b010599p-13,
    0x1.71ddf7e5f8cb4p-19,
    0x1.af5f80dc9ebfdp-26};

// (e^r - 1 - r) / r^2 on |r| <= ln 2 / 2; errors of e^r: fit 2^-13.1, evaluation 2^-27.7
inline constexpr float float_exp_bits11[] = {
    0x1.022102p-1f,
    0x1.573438p-3f};

// (e^r - 1 - r) / r^2 on |r| <= ln 2 / 2; errors of e^r: fit 2^-23.3, evaluation 2^-27.5
inline constexpr float float_exp_bits21[] = {
    0x1.fffdbap-2f,
    0x1.55547p-3f,
    0x1.573e2ap-5f,
    0x1.124d4ep-7f};

// (e^r - 1 - r) / r^2 on |r| <= ln 2 / 2; errors of e^r - 1: fit 2^-26.1, evaluation 2^-26.0
inline constexpr float float_expm1_bits21[] = {
    0x1p-1f,
    0x1.5554aep-3f,
    0x1.5554fp-5f,
    0x1.1228f2p-7f,
    0x1.6d440ap-10f};

// (e^r - 1 - r) / r^2 on |r| <= ln 2 / 2; errors of e^r - 1: fit 2^-15.5, evaluation 2^-26.0
inline constexpr float float_expm1_bits11[] = {
    0x1.fffddp-2f,
    0x1.570a38p-3f,
    0x1.574126p-5f};

inline constexpr float float_ln2_hi = 0x1.62e4p-1f;
inline constexpr float float_ln2_lo = 0x1.7f7d1cp-20f;
inline constexpr float float_per_ln2 = 0x1.715476p+0f;
} // namespace kelvm::inline KELVM_BUILD::exp_core_tables
