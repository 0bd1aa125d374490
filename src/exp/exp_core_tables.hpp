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

// 2^(j/128), less j in the bits above 2^45; what it lacks, relatively
alignas(64) inline constexpr double exp2_less_row_and_rest[128][2] = {
{0x1p+0,0x0p+0},
{0x1.ff63da9fb3335p-1,0x1.b3b4f1a88bf6dp-54},
{0x1.fec9a3e778061p-1,-0x1.160139cd8dc5dp-56},
{0x1.fe315e86e7f85p-1,-0x1.05e7a108766d1p-54},
{0x1.fd9b0d3158574p-1,0x1.cd2523567f613p-55},
{0x1.fd06b29ddf6dep-1,-0x1.bce8023f98efap-55},
{0x1.fc74518759bc8p-1,0x1.0f74e61e6c861p-57},
{0x1.fbe3ecac6f383p-1,0x1.0a3e45b33d398p-54},
{0x1.fb5586cf9890fp-1,0x1.79aa65d837b6cp-54},
{0x1.fac922b7247f7p-1,0x1.eb51a92fdeffbp-55},
{0x1.fa3ec32d3d1a2p-1,0x1.ebe3d702f9cd1p-60},
{0x1.f9b66affed31bp-1,-0x1.a033489906e0bp-57},
{0x1.f9301d0125b51p-1,-0x1.556522a2fbd0ep-54},
{0x1.f8abdc06c31ccp-1,-0x1.080ef8c4eea55p-58},
{0x1.f829aaea92dep-1,-0x1.1c923b9d5f416p-54},
{0x1.f7a98c8a58e51p-1,0x1.0d3e3e95c55afp-55},
{0x1.f72b83c7d517bp-1,-0x1.01b15eaa59348p-55},
{0x1.f6af9388c8deap-1,-0x1.f1ff055de323dp-55},
{0x1.f635beb6fcb75p-1,0x1.b898c3f1353bfp-55},
{0x1.f5be084045cd4p-1,-0x1.6d99c7611eb27p-54},
{0x1.f54873168b9aap-1,0x1.aecf73e3a2f5fp-54},
{0x1.f4d5022fcd91dp-1,-0x1.fe782cb86389ep-55},
{0x1.f463b88628cd6p-1,0x1.a6f4144a6c38cp-55},
{0x1.f3f49917ddc96p-1,0x1.07a05b0e4047dp-55},
{0x1.f387a6e756238p-1,0x1.68efde3a8a893p-54},
{0x1.f31ce4fb2a63fp-1,0x1.75e18f274487dp-55},
{0x1.f2b4565e27cddp-1,0x1.0472b981fe7f2p-55},
{0x1.f24dfe1f56381p-1,-0x1.6b87b3f71085ep-54},
{0x1.f1e9df51fdee1p-1,0x1.2f7e16d09ab31p-55},
{0x1.f187fd0dad99p-1,-0x1.d219b1a6fbffbp-60},
{0x1.f1285a6e4030bp-1,0x1.b3782720c0ab3p-55},
{0x1.f0cafa93e2f56p-1,0x1.e149289cecb8fp-57},
{0x1.f06fe0a31b715p-1,0x1.34d754db0abb6p-55},
{0x1.f0170fc4cd831p-1,0x1.64201e2ac744cp-55},
{0x1.efc08b26416ffp-1,0x1.fdd395dd3f84ap-55},
{0x1.ef6c55f929ff1p-1,-0x1.6a3803b8e5b04p-55},
{0x1.ef1a7373aa9cbp-1,-0x1.24aedcc4b5069p-54},
{0x1.eecae6d05d866p-1,-0x1.907f81b512d8fp-54},
{0x1.ee7db34e59ff7p-1,-0x1.1d1e83e9436d2p-56},
{0x1.ee32dc313a8e5p-1,-0x1.91919b3ce1b15p-54},
{0x1.edea64c123422p-1,0x1.59f48a72a4c6cp-55},
{0x1.eda4504ac801cp-1,-0x1.312607a28698ap-54},
{0x1.ed60a21f72e2ap-1,-0x1.8a78f4817895bp-58},
{0x1.ed1f5d950a897p-1,-0x1.c2c9b67499a1bp-56},
{0x1.ece086061892dp-1,0x1.363ed60c2ac11p-59},
{0x1.eca41ed1d0057p-1,0x1.666093b0664efp-54},
{0x1.ec6a2b5c13cdp-1,0x1.ecce1daa10379p-57},
{0x1.ec32af0d7d3dep-1,0x1.3ff8e3f0f123p-54},
{0x1.ebfdad5362a27p-1,0x1.690cebb7aafbp-56},
{0x1.ebcb299fddd0dp-1,0x1.31dbdeb54e077p-54},
{0x1.eb9b2769d2ca7p-1,-0x1.f94340071a38fp-55},
{0x1.eb6daa2cf6642p-1,-0x1.7deccdc93a34ap-55},
{0x1.eb42b569d4f82p-1,-0x1.8dec6bd0f386p-56},
{0x1.eb1a4ca5d920fp-1,-0x1.61246ec7b5cf6p-55},
{0x1.eaf4736b527dap-1,0x1.3350518fdd78dp-54},
{0x1.ead12d497c7fdp-1,0x1.b98b72f8a9b05p-56},
{0x1.eab07dd485429p-1,0x1.063e1e21c5409p-54},
{0x1.ea9268a5946b7p-1,0x1.4c7855019c6eap-60},
{0x1.ea76f15ad2148p-1,0x1.432e62b64c035p-54},
{0x1.ea5e1b976dc09p-1,-0x1.ce44a6199769fp-55},
{0x1.ea47eb03a5585p-1,-0x1.c33c53bef4da8p-55},
{0x1.ea34634ccc32p-1,-0x1.45378892be9aep-55},
{0x1.ea23882552225p-1,-0x1.3cedd78565858p-54},
{0x1.ea155d44ca973p-1,0x1.710aa807e1964p-58},
{0x1.ea09e667f3bcdp-1,-0x1.3b3efbf5e2229p-54},
{0x1.ea012750bdabfp-1,-0x1.a12ad8734b982p-57},
{0x1.e9fb23c651a2fp-1,-0x1.367efb86da9eep-57},
{0x1.e9f7df9519484p-1,-0x1.0dc3d54e08851p-55},
{0x1.e9f75e8ec5f74p-1,-0x1.81f647e5a3ecfp-56},
{0x1.e9f9a48a58174p-1,-0x1.6ee4ac08b7dbp-55},
{0x1.e9feb564267c9p-1,-0x1.619321e55e68ap-55},
{0x1.ea0694fde5d3fp-1,0x1.09ccb5e09d4d2p-54},
{0x1.ea11473eb0187p-1,-0x1.b32dcb94da51dp-56},
{0x1.ea1ed0130c132p-1,0x1.4ecfd5467c06bp-54},
{0x1.ea2f336cf4e62p-1,0x1.5ebe1abd66c55p-57},
{0x1.ea427543e1a12p-1,-0x1.8a1c52fb3cf42p-55},
{0x1.ea589994cce13p-1,-0x1.369b6f13b3734p-54},
{0x1.ea71a4623c7adp-1,-0x1.05e843a19ff1ep-55},
{0x1.ea8d99b4492edp-1,-0x1.4d450d872576ep-54},
{0x1.eaac7d98a6699p-1,0x1.0ad675b0e8ap-54},
{0x1.eace5422aa0dbp-1,0x1.db72fc1f0eab4p-55},
{0x1.eaf3216b5448cp-1,-0x1.5b6609cc5e7ffp-57},
{0x1.eb1ae99157736p-1,0x1.bf68359f35f44p-56},
{0x1.eb45b0b91ffc6p-1,-0x1.3091fa71e3d83p-54},
{0x1.eb737b0cdc5e5p-1,-0x1.da9b88b6c1e29p-58},
{0x1.eba44cbc8520fp-1,-0x1.c23f97c90b959p-57},
{0x1.ebd829fde4e5p-1,-0x1.2434322f4f9aap-54},
{0x1.ec0f170ca07bap-1,-0x1.5ca6cd7668e4bp-55},
{0x1.ec49182a3f09p-1,0x1.1affc2b91ce27p-56},
{0x1.ec86319e32323p-1,0x1.dd235e10a73bbp-57},
{0x1.ecc667b5de565p-1,-0x1.7c50422622263p-55},
{0x1.ed09bec4a2d33p-1,0x1.b1c86e3e231d5p-55},
{0x1.ed503b23e255dp-1,-0x1.1bbd1d3bcbb15p-54},
{0x1.ed99e1330b358p-1,0x1.0cc319cee31d2p-54},
{0x1.ede6b5579fdbfp-1,0x1.469846e735ab3p-55},
{0x1.ee36bbfd3f37ap-1,-0x1.2dfcd978e9db4p-55},
{0x1.ee89f995ad3adp-1,0x1.c1a7792cb3386p-55},
{0x1.eee07298db666p-1,-0x1.07b8f4ad1d9fap-54},
{0x1.ef3a2b84f15fbp-1,-0x1.5c3d956dcaebap-58},
{0x1.ef9728de5593ap-1,-0x1.0a40e3da6f64p-54},
{0x1.eff76f2fb5e47p-1,-0x1.8d6f438ad9334p-57},
{0x1.f05b030a1064ap-1,-0x1.1eee26b588a36p-54},
{0x1.f0c1e904bc1d2p-1,0x1.4ffd70a5fddcdp-56},
{0x1.f12c25bd71e09p-1,-0x1.1bdfbfa9298adp-54},
{0x1.f199bdd85529cp-1,0x1.36eae30af0cb3p-56},
{0x1.f20ab5fffd07ap-1,0x1.ee3325c9ffd93p-55},
{0x1.f27f12e57d14bp-1,0x1.4e08fd10959acp-55},
{0x1.f2f6d9406e7b5p-1,0x1.3cdaf384e1a67p-57},
{0x1.f3720dcef9069p-1,0x1.76b2c6c921968p-57},
{0x1.f3f0b555dc3fap-1,-0x1.08a1883ccb5d2p-55},
{0x1.f472d4a07897cp-1,-0x1.fad5d3ffffa6fp-55},
{0x1.f4f87080d89f2p-1,-0x1.00dae3875a949p-54},
{0x1.f5818dcfba487p-1,0x1.4a385a63d07a7p-56},
{0x1.f60e316c98398p-1,-0x1.2919e2040220fp-55},
{0x1.f69e603db3285p-1,0x1.e5a50d5c192acp-55},
{0x1.f7321f301b46p-1,0x1.43a59ac016b4bp-55},
{0x1.f7c97337b9b5fp-1,-0x1.2d52107b43e1fp-55},
{0x1.f864614f5a129p-1,-0x1.92ab93b470dc9p-55},
{0x1.f902ee78b3ff6p-1,0x1.4b604603a88d3p-56},
{0x1.f9a51fbc74c83p-1,0x1.3c5ec519d7271p-55},
{0x1.fa4afa2a490dap-1,-0x1.ff7128fd391f1p-55},
{0x1.faf482d8e67f1p-1,-0x1.dae98e223747dp-55},
{0x1.fba1bee615a27p-1,0x1.ec3bc41aa2008p-55},
{0x1.fc52b376bba97p-1,0x1.42b94c3a9eb32p-55},
{0x1.fd0765b6e454p-1,0x1.a64a931d185edp-55},
{0x1.fdbfdad9cbe14p-1,-0x1.e37bae43be3edp-55},
{0x1.fe7c1819e90d8p-1,0x1.7893b4d91cd9cp-56},
{0x1.ff3c22b8f71f1p-1,0x1.305c14160cc89p-58},
};

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

// (e^r - 1 - r) / r^2 on |r| <= ln 2 / 256; errors of e^r - 1: fit 2^-56.1, evaluation 2^-62.5
inline constexpr double expm1_bits50[] = {
    0x1.ffffffffffe5ap-2,
    0x1.555555555548cp-3,
    0x1.55555c2e2ae3fp-5,
    0x1.111115c02a6b5p-7};

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

// (2^f - 1) / f, |f| <= 1/2, by powers of 2^23 f; relative errors of 2^f: fit 2^-23.3, evaluation 2^-25.3
inline constexpr float float_exp2_bits21[] = {
    0x1.62e42ap-24f,
    0x1.ebf9bap-49f,
    0x1.c6b6a8p-74f,
    0x1.3ceb3ap-99f,
    0x1.5bf5e4p-125f};

inline constexpr float float_ln2_hi = 0x1.62e4p-1f;
inline constexpr float float_ln2_lo = 0x1.7f7d1cp-20f;
inline constexpr float float_per_ln2 = 0x1.715476p+0f;
} // namespace kelvm::inline KELVM_BUILD::exp_core_tables
