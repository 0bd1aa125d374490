// The registers of this build: every set has those of the smaller ones.
#pragma once

#include "simd/sse41.hpp"
#if KELVM_AVX2 || KELVM_AVX512
#  include "simd/avx2.hpp"
#endif
#if KELVM_AVX512
#  include "simd/avx512.hpp"
#endif
