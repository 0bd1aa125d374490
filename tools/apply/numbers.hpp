// Numbers and the ways in which files hold them.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

/// Something wrong with what the user gave: one line, with file and place where there is one.
struct BadInput : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// text: words between white space, # starts a comment. raw: the bytes of floats or doubles. npy: NumPy's format.
enum class Format { unstated, text, raw, npy };

template <class Real> constexpr const char* type_name = sizeof(Real) == 8 ? "double" : "float";

/// The number that the whole word is, correctly rounded; "inf", "nan" and hexadecimal numbers included. Throws
/// std::invalid_argument, or std::range_error ("too large" or "too small") for a number that the type would make
/// infinite or zero.
template <class Real> Real parse_number(const std::string& word);

/// Appends the fewest digits that read back the same number.
template <class Real> void append_number(std::string& text, Real value);

/// What the header of a .npy file says of the array behind it.
struct Layout {
  std::string type; // such as <f8
  bool fortran_order = false;
  std::vector<std::uint64_t> shape;

  bool operator==(const Layout&) const = default;
  /// Throws BadInput, with this name, where the count does not fit into 64 bits.
  std::uint64_t elements(const std::string& file) const;
};

inline constexpr std::string_view npy_magic = "\x93NUMPY";

/// The type of an array whose elements have so many parts.
template <class Real> std::string npy_type(int parts) {
  return std::string(parts == 2 ? "<c" : "<f") + std::to_string(sizeof(Real) * std::size_t(parts));
}
/// The length of the header that starts with these 12 bytes, these included.
std::uint64_t npy_header_length(std::string_view start);
/// Understands a header. Throws BadInput with this file name.
Layout parse_npy_header(std::string_view header, const std::string& file);
/// A header of at least 128 bytes; all those of one dimension have 128.
std::string npy_header(const Layout& layout);
