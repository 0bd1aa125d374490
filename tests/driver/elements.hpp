// Elements for any function, as the bit patterns of their parts.
#pragma once

#include "functions.hpp"

#include <array>
#include <cstdint>
#include <vector>

namespace driver {

using Bytes = std::vector<unsigned char>;

/// Real and imaginary part of the first source, then of the second (or of the exponent). A real source has its value in
/// the first place of its pair.
using Element = std::array<std::uint64_t, 4>;

/// The bits of a number in a function's part type.
std::uint64_t bits_of(bool is_float, double x);
/// A number as the part type holds it, and that of some bits.
double rounded(bool is_float, double x);
double number_of(bool is_float, std::uint64_t bits);
bool is_nan(bool is_float, std::uint64_t bits);
bool is_signalling(bool is_float, std::uint64_t bits);
bool is_finite(bool is_float, std::uint64_t bits);
/// Zero, subnormal, or so little above that an inaccurate result may stand for a subnormal number (2^-10, relative).
bool is_tiny(bool is_float, std::uint64_t bits);

/// The places of an element that a function reads from its arrays.
std::vector<int> places_of(const harness::Function& function);

/// Special values in every place: zeros, subnormals, infinities, NaNs of all kinds, the ends of the range, the numbers
/// at which formulas change. All combinations for two places, a choice of them for four.
std::vector<Element> special_elements(const harness::Function& function);
/// Numbers from where the family is interesting.
std::vector<Element> domain_elements(const harness::Function& function, int count);
/// Those special elements and so many from the domain.
std::vector<Element> all_elements(const harness::Function& function, int of_the_domain);
/// Any bits.
std::vector<Element> random_elements(const harness::Function& function, int count);

/// A source array of the elements.
Bytes packed(const harness::Function& function, int source, const std::vector<Element>& elements);

} // namespace driver
