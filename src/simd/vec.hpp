// Vectors of any width and all that is done with them but table lookup (table.hpp).
#pragma once

#include "simd/arithmetic.hpp"
#include "simd/constants.hpp"
#include "simd/interval.hpp"
#include "simd/mask.hpp"
#include "simd/memory.hpp"
#include "simd/shuffle.hpp"
