// Tables and coefficients of the exponential core. Generated: do not edit.
//   tools/tables/exp_core.py > src/exp/exp_core_tables.hpp
#pragma once

#include "simd/isa.hpp"

namespace kelvm::inline KELVM_BUILD::exp_core_tables {

// clang-format off

inline constexpr double per_step_128 = 0x1.71547652b82fep+7;
inline constexpr double step_128_hi = 0x1.62e42fef80000p-8;
inline constexpr double step_128_lo = 0x1.1cf79abc9e3b4p-43;

inline constexpr double per_step_32 = 0x1.71547652b82fep+5;
inline constexpr double step_32_hi = 0x1.62e42fef80000p-6;
inline constexpr double step_32_lo = 0x1.1cf79abc9e3b4p-41;

// 2^(j/128): its upper 26 bits and the rest
alignas(64) inline constexpr double exp2_short_and_rest_128[][2] = {
    {0x1p+0, 0},
    {0x1.0163da8000000p+0, 0x1.fb33356d84a67p-28},
    {0x1.02c9a38000000p+0, 0x1.9de0183b9bdf3p-26},
    {0x1.04315e8000000p+0, 0x1.b9fe12f5ce3e7p-30},
    {0x1.059b0d0000000p+0, 0x1.8ac2ba1d73e2ap-27},
    {0x1.0706b28000000p+0, 0x1.ddf6ddc6dc404p-28},
    {0x1.0874518000000p+0, 0x1.d66f20230d7c9p-30},
    {0x1.09e3ec8000000p+0, 0x1.6379c1a290f03p-27},
    {0x1.0b55868000000p+0, 0x1.3e6243d8a62e5p-26},
    {0x1.0cc9228000000p+0, 0x1.b923fba03db83p-27},
    {0x1.0e3ec30000000p+0, 0x1.69e8d10103a17p-27},
    {0x1.0fb66a8000000p+0, 0x1.ffb4c6bc8c824p-26},
    {0x1.11301d0000000p+0, 0x1.25b50a4ebbf1bp-32},
    {0x1.12abdc0000000p+0, 0x1.b0c72fee4aeb5p-30},
    {0x1.1429aa8000000p+0, 0x1.aa4b77ecd0406p-26},
    {0x1.15a98c8000000p+0, 0x1.4b1ca24901aaep-29},
    {0x1.172b838000000p+0, 0x1.1f545eb737df2p-26},
    {0x1.18af938000000p+0, 0x1.191bd3777ee17p-29},
    {0x1.1a35be8000000p+0, 0x1.b7e5ba9e5b4c8p-27},
    {0x1.1bbe080000000p+0, 0x1.011734e6ac79dp-26},
    {0x1.1d48730000000p+0, 0x1.68b9aa7805b80p-28},
    {0x1.1ed5020000000p+0, 0x1.7e6c8e5c40d00p-27},
    {0x1.2063b88000000p+0, 0x1.8a3358ee3bac1p-30},
    {0x1.21f4990000000p+0, 0x1.7ddc962552fd3p-28},
    {0x1.2387a68000000p+0, 0x1.9d588e19b07ebp-26},
    {0x1.251ce48000000p+0, 0x1.eca98fcd60aaep-26},
    {0x1.26b4560000000p+0, 0x1.789f37495e99dp-26},
    {0x1.284dfe0000000p+0, 0x1.f5638096cf15dp-28},
    {0x1.29e9df0000000p+0, 0x1.47f7b84b09745p-26},
    {0x1.2b87fd0000000p+0, 0x1.b5b31ffbbd48dp-29},
    {0x1.2d285a0000000p+0, 0x1.b900c2d002475p-26},
    {0x1.2ecafa8000000p+0, 0x1.3e2f5611ca0f4p-28},
    {0x1.306fe08000000p+0, 0x1.18db8a96f46adp-27},
    {0x1.32170f8000000p+0, 0x1.13360c4d4e73cp-26},
    {0x1.33c08b0000000p+0, 0x1.320b7fa64e431p-27},
    {0x1.356c558000000p+0, 0x1.e4a7fc325188dp-26},
    {0x1.371a730000000p+0, 0x1.ceaa72a9c5154p-26},
    {0x1.38cae68000000p+0, 0x1.417619616a72cp-26},
    {0x1.3a7db30000000p+0, 0x1.3967fdba86f25p-26},
    {0x1.3c32dc0000000p+0, 0x1.89d47242000f9p-27},
    {0x1.3dea648000000p+0, 0x1.048d088d6d049p-26},
    {0x1.3fa4500000000p+0, 0x1.2b2006e82fdc0p-26},
    {0x1.4160a20000000p+0, 0x1.f72e29f84325cp-28},
    {0x1.431f5d8000000p+0, 0x1.50a896dc70444p-28},
    {0x1.44e0860000000p+0, 0x1.8624b40c4dbd0p-30},
    {0x1.46a41e8000000p+0, 0x1.474015dc944bdp-26},
    {0x1.486a2b0000000p+0, 0x1.704f3404f068fp-26},
    {0x1.4a32af0000000p+0, 0x1.afa7bcce5b17ap-29},
    {0x1.4bfdad0000000p+0, 0x1.4d8a89c750e5fp-26},
    {0x1.4dcb298000000p+0, 0x1.fddd0d63b36efp-28},
    {0x1.4f9b270000000p+0, 0x1.a74b29ab4cf63p-26},
    {0x1.516daa0000000p+0, 0x1.67b320e0897a9p-27},
    {0x1.5342b50000000p+0, 0x1.a753e077c2a0fp-26},
    {0x1.551a4c8000000p+0, 0x1.2ec9076297631p-27},
    {0x1.56f4730000000p+0, 0x1.ad49f699bb2c0p-26},
    {0x1.58d12d0000000p+0, 0x1.25f1ff494af0bp-26},
    {0x1.5ab07d8000000p+0, 0x1.52150a56324c0p-26},
    {0x1.5c92688000000p+0, 0x1.2ca35b80e258ep-27},
    {0x1.5e76f10000000p+0, 0x1.6b48521ba6f93p-26},
    {0x1.605e1b8000000p+0, 0x1.76dc08b076f59p-28},
    {0x1.6247eb0000000p+0, 0x1.d2ac258f87d03p-31},
    {0x1.6434630000000p+0, 0x1.3330c7f1dbe1cp-26},
    {0x1.6623880000000p+0, 0x1.2a91124893ecfp-27},
    {0x1.68155d0000000p+0, 0x1.132a5cc20715dp-26},
    {0x1.6a09e60000000p+0, 0x1.9fcef32422cbfp-26},
    {0x1.6c01270000000p+0, 0x1.42f6afbb5daa6p-26},
    {0x1.6dfb238000000p+0, 0x1.19468bbc8838bp-26},
    {0x1.6ff7df8000000p+0, 0x1.519483cf87e1bp-28},
    {0x1.71f75e8000000p+0, 0x1.d8bee7ba46e1ep-29},
    {0x1.73f9a48000000p+0, 0x1.4b02e77ab934ap-29},
    {0x1.75feb50000000p+0, 0x1.9099f22fdba6bp-26},
    {0x1.7806948000000p+0, 0x1.f7974fd866b81p-26},
    {0x1.7a11470000000p+0, 0x1.f580c36bea881p-27},
    {0x1.7c1ed00000000p+0, 0x1.30c1327c49334p-28},
    {0x1.7e2f330000000p+0, 0x1.b3d398841740bp-26},
    {0x1.8042750000000p+0, 0x1.0f86846d8379ap-26},
    {0x1.8258998000000p+0, 0x1.4cce128acf88bp-28},
    {0x1.8471a40000000p+0, 0x1.88f1eb3394bdbp-26},
    {0x1.868d998000000p+0, 0x1.a2497640720edp-27},
    {0x1.88ac7d8000000p+0, 0x1.8a669966530bdp-28},
    {0x1.8ace540000000p+0, 0x1.15506dadd3e2bp-27},
    {0x1.8cf3210000000p+0, 0x1.ad5122fbcaa87p-26},
    {0x1.8f1ae98000000p+0, 0x1.1577362b98274p-28},
    {0x1.9145b08000000p+0, 0x1.c8ffe2c4530dap-27},
    {0x1.93737b0000000p+0, 0x1.9b8bc9e8a0388p-29},
    {0x1.95a44c8000000p+0, 0x1.e4290774da41bp-27},
    {0x1.97d8298000000p+0, 0x1.f79393e2e7a48p-26},
    {0x1.9a0f170000000p+0, 0x1.940f737462137p-29},
    {0x1.9c49180000000p+0, 0x1.51f8480e3e236p-27},
    {0x1.9e86318000000p+0, 0x1.e323231824ca8p-28},
    {0x1.a0c6678000000p+0, 0x1.aef2b2594d6d4p-27},
    {0x1.a309be8000000p+0, 0x1.128b4cd6305c8p-26},
    {0x1.a5503b0000000p+0, 0x1.1f12ae45a1225p-27},
    {0x1.a799e10000000p+0, 0x1.9859ac3796fd9p-27},
    {0x1.a9e6b50000000p+0, 0x1.5e7f6fd0fac91p-26},
    {0x1.ac36bb8000000p+0, 0x1.f4fcde7036e5ap-26},
    {0x1.ae89f98000000p+0, 0x1.5ad3ad5e8734dp-28},
    {0x1.b0e0728000000p+0, 0x1.8db66590842adp-28},
    {0x1.b33a2b8000000p+0, 0x1.3c57ebdaff43ap-30},
    {0x1.b597288000000p+0, 0x1.79564e638e204p-26},
    {0x1.b7f76f0000000p+0, 0x1.7daf237553d84p-27},
    {0x1.ba5b030000000p+0, 0x1.420c930819679p-29},
    {0x1.bcc1e90000000p+0, 0x1.2f074891ee83dp-30},
    {0x1.bf2c258000000p+0, 0x1.eb8f0442046b8p-27},
    {0x1.c199bd8000000p+0, 0x1.6154a7088832cp-26},
    {0x1.c40ab58000000p+0, 0x1.fff41e9b4537ep-26},
    {0x1.c67f128000000p+0, 0x1.95f452d2884e0p-26},
    {0x1.c8f6d90000000p+0, 0x1.01b9ed446b2f1p-26},
    {0x1.cb720d8000000p+0, 0x1.3be41a4540f2fp-26},
    {0x1.cdf0b50000000p+0, 0x1.5770fe7113e25p-26},
    {0x1.d072d48000000p+0, 0x1.03c4bdc687918p-27},
    {0x1.d2f8708000000p+0, 0x1.b13e315bc2473p-33},
    {0x1.d5818d8000000p+0, 0x1.3ee921c976817p-26},
    {0x1.d80e310000000p+0, 0x1.b260e5eee13e7p-26},
    {0x1.da9e600000000p+0, 0x1.ed9942b84600dp-27},
    {0x1.dd321f0000000p+0, 0x1.80da3025b4aefp-27},
    {0x1.dfc9730000000p+0, 0x1.bdcdaf5cb4656p-27},
    {0x1.e264610000000p+0, 0x1.3d684a2849d88p-26},
    {0x1.e502ee0000000p+0, 0x1.e2cffd89cf44cp-26},
    {0x1.e7a51f8000000p+0, 0x1.e3a641a5aa459p-27},
    {0x1.ea4afa0000000p+0, 0x1.52486cc2c7b9dp-27},
    {0x1.ecf4828000000p+0, 0x1.6399fc236c0c5p-26},
    {0x1.efa1be8000000p+0, 0x1.985689ddc7f48p-26},
    {0x1.f252b30000000p+0, 0x1.daeea5d3a1a5cp-26},
    {0x1.f507658000000p+0, 0x1.b722a033a7c26p-27},
    {0x1.f7bfda8000000p+0, 0x1.672f84e244ed3p-26},
    {0x1.fa7c180000000p+0, 0x1.9e90d82e90a7ep-28},
    {0x1.fd3c228000000p+0, 0x1.c7b8f884badd2p-27},
};

// 2^(j/32)
alignas(64) inline constexpr double exp2_32[] = {
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

// (e^r - 1 - r) / r^2 on |r| <= ln 2 / 256; error 2^-68.2 of e^r - 1
inline constexpr double expm1_full[] = {
    0x1p-1,
    0x1.55555555554afp-3,
    0x1.55555555554e4p-5,
    0x1.1111156d0cae8p-7,
    0x1.6c16c655bc4a3p-10};

// (e^r - 1 - r) / r^2 on |r| <= ln 2 / 256; error 2^-65.4 of e^r
inline constexpr double exp_full[] = {
    0x1.ffffffffffdb9p-2,
    0x1.555555555546fp-3,
    0x1.55555cf74a74ep-5,
    0x1.111116032d0f6p-7};

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

// (e^r - 1 - r) / r^2 on |r| <= ln 2 / 64; error 2^-33.2 of e^r
inline constexpr double exp_bits27[] = {
    0x1.00008824ea5f3p-1,
    0x1.5555c85c0cceep-3};

// (e^r - 1 - r) / r^2 on |r| <= ln 2 / 256; error 2^-56.1 of e^r - 1
inline constexpr double expm1_bits50[] = {
    0x1.ffffffffffe5ap-2,
    0x1.555555555548cp-3,
    0x1.55555c2e2ae3fp-5,
    0x1.111115c02a6b5p-7};

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
