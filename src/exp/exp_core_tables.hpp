// Tables and coefficients of the exponential core. Generated: do not edit.
//   tools/tables/exp_core.py > src/exp/exp_core_tables.hpp
#pragma once

#include "simd/isa.hpp"

namespace kelvm::inline KELVM_BUILD::exp_core_tables {

// clang-format off

inline constexpr double per_step = 0x1.71547652b82fep+5;
inline constexpr double step_hi = 0x1.62e42fef80000p-6;
inline constexpr double step_lo = 0x1.1cf79abc9e3b4p-41;

// 2^(j/32): its upper 26 bits and the rest
alignas(64) inline constexpr double exp2_short_and_rest[][2] = {
    {0x1p+0, 0},
    {0x1.059b0d0000000p+0, 0x1.8ac2ba1d73e2ap-27},
    {0x1.0b55868000000p+0, 0x1.3e6243d8a62e5p-26},
    {0x1.11301d0000000p+0, 0x1.25b50a4ebbf1bp-32},
    {0x1.172b838000000p+0, 0x1.1f545eb737df2p-26},
    {0x1.1d48730000000p+0, 0x1.68b9aa7805b80p-28},
    {0x1.2387a68000000p+0, 0x1.9d588e19b07ebp-26},
    {0x1.29e9df0000000p+0, 0x1.47f7b84b09745p-26},
    {0x1.306fe08000000p+0, 0x1.18db8a96f46adp-27},
    {0x1.371a730000000p+0, 0x1.ceaa72a9c5154p-26},
    {0x1.3dea648000000p+0, 0x1.048d088d6d049p-26},
    {0x1.44e0860000000p+0, 0x1.8624b40c4dbd0p-30},
    {0x1.4bfdad0000000p+0, 0x1.4d8a89c750e5fp-26},
    {0x1.5342b50000000p+0, 0x1.a753e077c2a0fp-26},
    {0x1.5ab07d8000000p+0, 0x1.52150a56324c0p-26},
    {0x1.6247eb0000000p+0, 0x1.d2ac258f87d03p-31},
    {0x1.6a09e60000000p+0, 0x1.9fcef32422cbfp-26},
    {0x1.71f75e8000000p+0, 0x1.d8bee7ba46e1ep-29},
    {0x1.7a11470000000p+0, 0x1.f580c36bea881p-27},
    {0x1.8258998000000p+0, 0x1.4cce128acf88bp-28},
    {0x1.8ace540000000p+0, 0x1.15506dadd3e2bp-27},
    {0x1.93737b0000000p+0, 0x1.9b8bc9e8a0388p-29},
    {0x1.9c49180000000p+0, 0x1.51f8480e3e236p-27},
    {0x1.a5503b0000000p+0, 0x1.1f12ae45a1225p-27},
    {0x1.ae89f98000000p+0, 0x1.5ad3ad5e8734dp-28},
    {0x1.b7f76f0000000p+0, 0x1.7daf237553d84p-27},
    {0x1.c199bd8000000p+0, 0x1.6154a7088832cp-26},
    {0x1.cb720d8000000p+0, 0x1.3be41a4540f2fp-26},
    {0x1.d5818d8000000p+0, 0x1.3ee921c976817p-26},
    {0x1.dfc9730000000p+0, 0x1.bdcdaf5cb4656p-27},
    {0x1.ea4afa0000000p+0, 0x1.52486cc2c7b9dp-27},
    {0x1.f507658000000p+0, 0x1.b722a033a7c26p-27},
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
    0x1.9c49182a3f090p+0,
    0x1.a5503b23e255dp+0,
    0x1.ae89f995ad3adp+0,
    0x1.b7f76f2fb5e47p+0,
    0x1.c199bdd85529cp+0,
    0x1.cb720dcef9069p+0,
    0x1.d5818dcfba487p+0,
    0x1.dfc97337b9b5fp+0,
    0x1.ea4afa2a490dap+0,
    0x1.f50765b6e4540p+0,
};

// (e^r - 1 - r) / r^2 on |r| <= ln 2 / 64; error 2^-63.2 of e^r
inline constexpr double exp_full[] = {
    0x1p-1,
    0x1.5555555548e7ep-3,
    0x1.555555554e3adp-5,
    0x1.11115ba81cc35p-7,
    0x1.6c17102e2dca2p-10};

// (e^r - 1 - r) / r^2 on |r| <= ln 2 / 64; error 2^-53.4 of e^r
inline constexpr double exp_bits50[] = {
    0x1.ffffffffdb880p-2,
    0x1.5555555546cc1p-3,
    0x1.5555cf7ec096dp-5,
    0x1.111160a9d31d2p-7};

// (e^r - 1 - r) / r^2 on |r| <= ln 2 / 64; error 2^-42.5 of e^r
inline constexpr double exp_bits40[] = {
    0x1.ffffffffd415ap-2,
    0x1.5555c7a1c93d7p-3,
    0x1.5555da7698014p-5};

// (e^r - 1 - r) / r^2 on |r| <= ln 2 / 64; error 2^-66.2 of e^r - 1
inline constexpr double expm1_full[] = {
    0x1p-1,
    0x1.5555555555555p-3,
    0x1.555555554f1ebp-5,
    0x1.111111112d8ffp-7,
    0x1.6c170c02a1431p-10,
    0x1.a019984ac1502p-13};

// (e^r - 1 - r) / r^2 on |r| <= ln 2 / 64; error 2^-56.2 of e^r - 1
inline constexpr double expm1_bits50[] = {
    0x1p-1,
    0x1.555555554aeedp-3,
    0x1.555555554e45cp-5,
    0x1.111156d3a15edp-7,
    0x1.6c170febe7edep-10};

// (e^r - 1 - r) / r^2 on |r| <= ln 2 / 64; error 2^-46.1 of e^r - 1
inline constexpr double expm1_bits40[] = {
    0x1.ffffffffe5a05p-2,
    0x1.5555555548bedp-3,
    0x1.5555c2e2538f6p-5,
    0x1.11115c057c88ep-7};

// (e^r - 1 - r) / r^2 on |r| <= ln 2 / 64; error 2^-35.6 of e^r - 1
inline constexpr double expm1_bits27[] = {
    0x1.ffffffffdd277p-2,
    0x1.5555c2478d094p-3,
    0x1.5555cfefce0dap-5};

// e^r on |r| <= ln 2 / 2; error 2^-28.9
inline constexpr double exp_bits27[] = {
    0x1p+0,
    0x1.0000008b4b70cp+0,
    0x1.fffffc233997ap-2,
    0x1.555417eed5d8ep-3,
    0x1.55581ccd2b5cfp-5,
    0x1.12683db45f0b3p-7,
    0x1.6aebfae11b94fp-10};

// e^r on |r| <= ln 2 / 2; error 2^-23.4
inline constexpr double exp_bits21[] = {
    0x1p+0,
    0x1.fffff61b692dfp-1,
    0x1.fffdc28584da4p-2,
    0x1.555a7170e02e5p-3,
    0x1.573b6c59a19e9p-5,
    0x1.0fa6374aeada5p-7};

// (e^r - 1 - r) / r^2 on |r| <= ln 2 / 2; error 2^-13.2 of e^r
inline constexpr float float_exp_bits11[] = {
    0x1.0221020000000p-1f,
    0x1.5734380000000p-3f};

// (e^r - 1 - r) / r^2 on |r| <= ln 2 / 2; error 2^-26.1 of e^r - 1
inline constexpr float float_expm1_bits21[] = {
    0x1p-1f,
    0x1.5554ae0000000p-3f,
    0x1.5554f00000000p-5f,
    0x1.1228f20000000p-7f,
    0x1.6d440a0000000p-10f};

// (e^r - 1 - r) / r^2 on |r| <= ln 2 / 2; error 2^-15.6 of e^r - 1
inline constexpr float float_expm1_bits11[] = {
    0x1.fffdd00000000p-2f,
    0x1.570a380000000p-3f,
    0x1.5741260000000p-5f};

inline constexpr float float_ln2_hi = 0x1.62e4000000000p-1f;
inline constexpr float float_ln2_lo = 0x1.7f7d1c0000000p-20f;
inline constexpr float float_per_ln2 = 0x1.7154760000000p+0f;
// clang-format on

} // namespace kelvm::inline KELVM_BUILD::exp_core_tables
