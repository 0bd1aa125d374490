// Tables and coefficients of sines, cosines, hyperbolic sines and cosines. Made by tools/tables/factors.py, run by
// tools/tables/regenerate: do not edit.
// Of each fit: the interval; what the errors are relative to, which is the weight; the error of the fit with these
// coefficients; a bound of that of its evaluation, by Horner's rule without fused steps.
// clang-format off
#pragma once

#include "simd/isa.hpp"

namespace kelvm::inline KELVM_BUILD::factors_tables {

// sin a and cos a, a = j pi/32: each rounded to a multiple of 2^-26, and the rest
alignas(64) inline constexpr double sine_cosine[64][4] = {
{0x0p+0,0x0p+0,0x1p+0,0x0p+0},
{0x1.917a6cp-4,-0x1.eb25ea0f138c7p-31,0x1.fd88dap-1,0x1.e89292cf04139p-28},
{0x1.8f8b84p-3,-0x1.cb2cfaa4da337p-30,0x1.f6297dp-1,-0x1.1469faa77a357p-34},
{0x1.294063p-2,-0x1.2a60fa574a369p-30,0x1.e9f4158p-1,-0x1.39d225a27d387p-29},
{0x1.87de2ap-2,0x1.abaa58b469891p-28,0x1.d906bdp-1,-0x1.9ae573aea067cp-30},
{0x1.e2b5d4p-2,-0x1.fe4271387c9dcp-28,0x1.c38b2fp-1,0x1.80bdb0d23e9d1p-29},
{0x1.1c73b38p-1,0x1.ae68c86c9774ap-29,0x1.a9b6628p-1,0x1.0ea1a3033ec62p-29},
{0x1.44cf328p-1,-0x1.7b7114f3fc4afp-28,0x1.8bc8068p-1,0x1.8a8ba05a743dap-28},
{0x1.6a09e68p-1,-0x1.80c4336f74d05p-29,0x1.6a09e68p-1,-0x1.80c4336f74d05p-29},
{0x1.8bc8068p-1,0x1.8a8ba05a743dap-28,0x1.44cf328p-1,-0x1.7b7114f3fc4afp-28},
{0x1.a9b6628p-1,0x1.0ea1a3033ec62p-29,0x1.1c73b38p-1,0x1.ae68c86c9774ap-29},
{0x1.c38b2fp-1,0x1.80bdb0d23e9d1p-29,0x1.e2b5d4p-2,-0x1.fe4271387c9dcp-28},
{0x1.d906bdp-1,-0x1.9ae573aea067cp-30,0x1.87de2ap-2,0x1.abaa58b469891p-28},
{0x1.e9f4158p-1,-0x1.39d225a27d387p-29,0x1.294063p-2,-0x1.2a60fa574a369p-30},
{0x1.f6297dp-1,-0x1.1469faa77a357p-34,0x1.8f8b84p-3,-0x1.cb2cfaa4da337p-30},
{0x1.fd88dap-1,0x1.e89292cf04139p-28,0x1.917a6cp-4,-0x1.eb25ea0f138c7p-31},
{0x1p+0,0x0p+0,0x0p+0,0x0p+0},
{0x1.fd88dap-1,0x1.e89292cf04139p-28,-0x1.917a6cp-4,0x1.eb25ea0f138c7p-31},
{0x1.f6297dp-1,-0x1.1469faa77a357p-34,-0x1.8f8b84p-3,0x1.cb2cfaa4da337p-30},
{0x1.e9f4158p-1,-0x1.39d225a27d387p-29,-0x1.294063p-2,0x1.2a60fa574a369p-30},
{0x1.d906bdp-1,-0x1.9ae573aea067cp-30,-0x1.87de2ap-2,-0x1.abaa58b469891p-28},
{0x1.c38b2fp-1,0x1.80bdb0d23e9d1p-29,-0x1.e2b5d4p-2,0x1.fe4271387c9dcp-28},
{0x1.a9b6628p-1,0x1.0ea1a3033ec62p-29,-0x1.1c73b38p-1,-0x1.ae68c86c9774ap-29},
{0x1.8bc8068p-1,0x1.8a8ba05a743dap-28,-0x1.44cf328p-1,0x1.7b7114f3fc4afp-28},
{0x1.6a09e68p-1,-0x1.80c4336f74d05p-29,-0x1.6a09e68p-1,0x1.80c4336f74d05p-29},
{0x1.44cf328p-1,-0x1.7b7114f3fc4afp-28,-0x1.8bc8068p-1,-0x1.8a8ba05a743dap-28},
{0x1.1c73b38p-1,0x1.ae68c86c9774ap-29,-0x1.a9b6628p-1,-0x1.0ea1a3033ec62p-29},
{0x1.e2b5d4p-2,-0x1.fe4271387c9dcp-28,-0x1.c38b2fp-1,-0x1.80bdb0d23e9d1p-29},
{0x1.87de2ap-2,0x1.abaa58b469891p-28,-0x1.d906bdp-1,0x1.9ae573aea067cp-30},
{0x1.294063p-2,-0x1.2a60fa574a369p-30,-0x1.e9f4158p-1,0x1.39d225a27d387p-29},
{0x1.8f8b84p-3,-0x1.cb2cfaa4da337p-30,-0x1.f6297dp-1,0x1.1469faa77a357p-34},
{0x1.917a6cp-4,-0x1.eb25ea0f138c7p-31,-0x1.fd88dap-1,-0x1.e89292cf04139p-28},
{0x0p+0,0x0p+0,-0x1p+0,0x0p+0},
{-0x1.917a6cp-4,0x1.eb25ea0f138c7p-31,-0x1.fd88dap-1,-0x1.e89292cf04139p-28},
{-0x1.8f8b84p-3,0x1.cb2cfaa4da337p-30,-0x1.f6297dp-1,0x1.1469faa77a357p-34},
{-0x1.294063p-2,0x1.2a60fa574a369p-30,-0x1.e9f4158p-1,0x1.39d225a27d387p-29},
{-0x1.87de2ap-2,-0x1.abaa58b469891p-28,-0x1.d906bdp-1,0x1.9ae573aea067cp-30},
{-0x1.e2b5d4p-2,0x1.fe4271387c9dcp-28,-0x1.c38b2fp-1,-0x1.80bdb0d23e9d1p-29},
{-0x1.1c73b38p-1,-0x1.ae68c86c9774ap-29,-0x1.a9b6628p-1,-0x1.0ea1a3033ec62p-29},
{-0x1.44cf328p-1,0x1.7b7114f3fc4afp-28,-0x1.8bc8068p-1,-0x1.8a8ba05a743dap-28},
{-0x1.6a09e68p-1,0x1.80c4336f74d05p-29,-0x1.6a09e68p-1,0x1.80c4336f74d05p-29},
{-0x1.8bc8068p-1,-0x1.8a8ba05a743dap-28,-0x1.44cf328p-1,0x1.7b7114f3fc4afp-28},
{-0x1.a9b6628p-1,-0x1.0ea1a3033ec62p-29,-0x1.1c73b38p-1,-0x1.ae68c86c9774ap-29},
{-0x1.c38b2fp-1,-0x1.80bdb0d23e9d1p-29,-0x1.e2b5d4p-2,0x1.fe4271387c9dcp-28},
{-0x1.d906bdp-1,0x1.9ae573aea067cp-30,-0x1.87de2ap-2,-0x1.abaa58b469891p-28},
{-0x1.e9f4158p-1,0x1.39d225a27d387p-29,-0x1.294063p-2,0x1.2a60fa574a369p-30},
{-0x1.f6297dp-1,0x1.1469faa77a357p-34,-0x1.8f8b84p-3,0x1.cb2cfaa4da337p-30},
{-0x1.fd88dap-1,-0x1.e89292cf04139p-28,-0x1.917a6cp-4,0x1.eb25ea0f138c7p-31},
{-0x1p+0,0x0p+0,0x0p+0,0x0p+0},
{-0x1.fd88dap-1,-0x1.e89292cf04139p-28,0x1.917a6cp-4,-0x1.eb25ea0f138c7p-31},
{-0x1.f6297dp-1,0x1.1469faa77a357p-34,0x1.8f8b84p-3,-0x1.cb2cfaa4da337p-30},
{-0x1.e9f4158p-1,0x1.39d225a27d387p-29,0x1.294063p-2,-0x1.2a60fa574a369p-30},
{-0x1.d906bdp-1,0x1.9ae573aea067cp-30,0x1.87de2ap-2,0x1.abaa58b469891p-28},
{-0x1.c38b2fp-1,-0x1.80bdb0d23e9d1p-29,0x1.e2b5d4p-2,-0x1.fe4271387c9dcp-28},
{-0x1.a9b6628p-1,-0x1.0ea1a3033ec62p-29,0x1.1c73b38p-1,0x1.ae68c86c9774ap-29},
{-0x1.8bc8068p-1,-0x1.8a8ba05a743dap-28,0x1.44cf328p-1,-0x1.7b7114f3fc4afp-28},
{-0x1.6a09e68p-1,0x1.80c4336f74d05p-29,0x1.6a09e68p-1,-0x1.80c4336f74d05p-29},
{-0x1.44cf328p-1,0x1.7b7114f3fc4afp-28,0x1.8bc8068p-1,0x1.8a8ba05a743dap-28},
{-0x1.1c73b38p-1,-0x1.ae68c86c9774ap-29,0x1.a9b6628p-1,0x1.0ea1a3033ec62p-29},
{-0x1.e2b5d4p-2,0x1.fe4271387c9dcp-28,0x1.c38b2fp-1,0x1.80bdb0d23e9d1p-29},
{-0x1.87de2ap-2,-0x1.abaa58b469891p-28,0x1.d906bdp-1,-0x1.9ae573aea067cp-30},
{-0x1.294063p-2,0x1.2a60fa574a369p-30,0x1.e9f4158p-1,-0x1.39d225a27d387p-29},
{-0x1.8f8b84p-3,0x1.cb2cfaa4da337p-30,0x1.f6297dp-1,-0x1.1469faa77a357p-34},
{-0x1.917a6cp-4,0x1.eb25ea0f138c7p-31,0x1.fd88dap-1,0x1.e89292cf04139p-28},
};

// pi/32: products of the first three with integers below 2^20 are exact
inline constexpr double pi_32_0 = 0x1.921fb544p-4;
inline constexpr double pi_32_1 = 0x1.0b4611ap-38;
inline constexpr double pi_32_2 = 0x1.898cc518p-68;
inline constexpr double pi_32_3 = -0x1.fc8f8cbb5bf6cp-101;

// (sin r - r) / r^3 by powers of r^2, |r| <= pi/64; relative errors: fit 2^-60.0, evaluation 2^-64.2
inline constexpr double sin_full[] = {
    -0x1.5555555555455p-3,
    0x1.111111073c0d7p-7,
    -0x1.a013253929204p-13};

// (cos r - 1) / r^2 by powers of r^2, |r| <= pi/64; absolute errors: fit 2^-73.2, evaluation 2^-62.6
inline constexpr double cos_full[] = {
    -0x1p-1,
    0x1.55555555554a8p-5,
    -0x1.6c16c161ba844p-10,
    0x1.a013db0b0f268p-16};

// (sin r - r) / r^3 by powers of r^2, |r| <= pi/64; relative errors: fit 2^-43.0, evaluation 2^-64.2
inline constexpr double sin_short[] = {
    -0x1.5555554435b8p-3,
    0x1.110b78a1a4e46p-7};

// (cos r - 1) / r^2 by powers of r^2, |r| <= pi/64; absolute errors: fit 2^-40.2, evaluation 2^-62.6
inline constexpr double cos_short[] = {
    -0x1.ffffffc411957p-2,
    0x1.554b8a9977ae4p-5};

// (sin r - r) / r^3 by powers of r^2, |r| <= pi/4; relative errors: fit 2^-37.5, evaluation 2^-56.2
inline constexpr double sin_whole[] = {
    -0x1.5555554ca818cp-3,
    0x1.111108894afdbp-7,
    -0x1.a00f9327034fp-13,
    0x1.6cd5d578b087fp-19};

// (cos r - 1) / r^2 by powers of r^2, |r| <= pi/4; absolute errors: fit 2^-34.1, evaluation 2^-54.6
inline constexpr double cos_whole[] = {
    -0x1.ffffffd05f639p-2,
    0x1.55553deadf72p-5,
    -0x1.6c086f5f39853p-10,
    0x1.99308eed56b8p-16};

// (sin r - r) / r^3 by powers of r^2, |r| <= pi/4; relative errors: fit 2^-28.0, evaluation 2^-27.2
inline constexpr float sin_single_bits21[] = {
    -0x1.555546p-3f,
    0x1.11077ap-7f,
    -0x1.9954a8p-13f};

// (cos r - 1) / r^2 by powers of r^2, |r| <= pi/4; absolute errors: fit 2^-33.1, evaluation 2^-25.6
inline constexpr float cos_single_bits21[] = {
    -0x1p-1f,
    0x1.55554ap-5f,
    -0x1.6c0c2ap-10f,
    0x1.99e8f8p-16f};

// (sin r - r) / r^3 by powers of r^2, |r| <= pi/4; relative errors: fit 2^-19.1, evaluation 2^-27.2
inline constexpr float sin_single_bits11[] = {
    -0x1.554472p-3f,
    0x1.0b86dcp-7f};

// (cos r - 1) / r^2 by powers of r^2, |r| <= pi/4; absolute errors: fit 2^-16.3, evaluation 2^-25.6
inline constexpr float cos_single_bits11[] = {
    -0x1.ffc51cp-2f,
    0x1.4baa3ap-5f};

// (sinh r - r) / r^3 by powers of r^2, |r| <= ln 2 / 64; relative errors: fit 2^-73.0, evaluation 2^-68.6
inline constexpr double sinh_full[] = {
    0x1.5555555555555p-3,
    0x1.1111111131524p-7,
    0x1.a019762c5fc4ep-13};

// (cosh r - 1) / r^2 by powers of r^2, |r| <= ln 2 / 64; absolute errors: fit 2^-73.2, evaluation 2^-67.0
inline constexpr double cosh_full[] = {
    0x1p-1,
    0x1.555555554e5cfp-5,
    0x1.6c170f83bc06fp-10};

// (sinh r - r) / r^3 by powers of r^2, |r| <= ln 2 / 64; relative errors: fit 2^-35.5, evaluation 0
inline constexpr double sinh_short[] = {
    0x1.5555c23fb5bd6p-3};

// (cosh r - 1) / r^2 by powers of r^2, |r| <= ln 2 / 64; absolute errors: fit 2^-53.3, evaluation 2^-67.0
inline constexpr double cosh_short[] = {
    0x1.ffffffffdba3cp-2,
    0x1.5555cf5e257fdp-5};

// (sinh r - r) / r^3 by powers of r^2, |r| <= ln 2 / 2; relative errors: fit 2^-26.1, evaluation 2^-29.6
inline constexpr float sinh_single_bits21[] = {
    0x1.5554aep-3f,
    0x1.1228fp-7f};

// (cosh r - 1) / r^2 by powers of r^2, |r| <= ln 2 / 2; absolute errors: fit 2^-33.2, evaluation 2^-28.0
inline constexpr float cosh_single_bits21[] = {
    0x1p-1f,
    0x1.5554e6p-5f,
    0x1.6d4f24p-10f};

// (sinh r - r) / r^3 by powers of r^2, |r| <= ln 2 / 2; relative errors: fit 2^-15.5, evaluation 0
inline constexpr float sinh_single_bits11[] = {
    0x1.570a24p-3f};

// (cosh r - 1) / r^2 by powers of r^2, |r| <= ln 2 / 2; absolute errors: fit 2^-23.3, evaluation 2^-28.0
inline constexpr float cosh_single_bits11[] = {
    0x1.fffdb8p-2f,
    0x1.573ec2p-5f};

} // namespace kelvm::inline KELVM_BUILD::factors_tables
