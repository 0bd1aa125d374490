#include "numbers.hpp"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdlib>

template <class Real> Real parse_number(const std::string& word) {
  char* end = nullptr;
  Real value;
  errno = 0;
  if constexpr (sizeof(Real) == 8)
    value = std::strtod(word.c_str(), &end);
  else
    value = std::strtof(word.c_str(), &end);
  const bool starts_with_space = word.starts_with(' ') || (!word.empty() && word[0] >= '\t' && word[0] <= '\r');
  if (word.empty() || starts_with_space || end != word.c_str() + word.size()) throw std::invalid_argument(word);
  // strtod reports subnormal numbers, too: those are as good as the type can do.
  if (errno == ERANGE && std::isinf(value)) throw std::range_error("too large");
  if (errno == ERANGE && value == 0) throw std::range_error("too small");
  return value;
}

template <class Real> void append_number(std::string& text, Real value) {
  char word[64];
  text.append(word, std::to_chars(word, word + sizeof word, value).ptr);
}

std::uint64_t Layout::elements(const std::string& file) const {
  std::uint64_t count = 1;
  for (const std::uint64_t extent : shape)
    if (__builtin_mul_overflow(count, extent, &count)) throw BadInput(file + ": its shape has too many elements");
  return count;
}

std::uint64_t npy_header_length(std::string_view start) {
  const auto byte = [&](std::size_t i) { return std::uint64_t(static_cast<unsigned char>(start[i])); };
  return byte(6) == 1 ? 10 + byte(8) + (byte(9) << 8)
                      : 12 + byte(8) + (byte(9) << 8) + (byte(10) << 16) + (byte(11) << 24);
}

Layout parse_npy_header(std::string_view header, const std::string& file) {
  // What stands between two characters behind a key, white space before the first of them apart.
  const auto value = [&](std::string_view key, char open, char close) {
    const std::size_t at = header.find(key);
    const std::size_t begin = at == header.npos ? at : header.find_first_not_of(' ', at + key.size());
    const std::size_t end = begin == header.npos || header[begin] != open ? header.npos : header.find(close, begin + 1);
    if (end == header.npos) throw BadInput(file + ": is no array of numbers");
    return header.substr(begin + 1, end - begin - 1);
  };
  Layout layout;
  layout.type = value("'descr':", '\'', '\'');
  layout.fortran_order = value("'fortran_order'", ':', ',').ends_with("True");
  const std::string shape(value("'shape':", '(', ')'));
  for (std::size_t i = 0; (i = shape.find_first_of("0123456789", i)) < shape.size();) {
    std::uint64_t extent = 0;
    const auto [end, error] = std::from_chars(&shape[i], shape.data() + shape.size(), extent);
    if (error != std::errc()) throw BadInput(file + ": its shape has too many elements");
    layout.shape.push_back(extent);
    i = std::size_t(end - shape.data());
  }
  return layout;
}

std::string npy_header(const Layout& layout) {
  std::string text =
      "{'descr': '" + layout.type + "', 'fortran_order': " + (layout.fortran_order ? "True" : "False") + ", 'shape': (";
  for (const std::uint64_t extent : layout.shape) text += std::to_string(extent) + ", ";
  if (!layout.shape.empty()) text.resize(text.size() - (layout.shape.size() == 1 ? 1 : 2)); // (2,) but (2, 3)
  text += "), }";
  const std::size_t whole = std::max<std::size_t>(128, (10 + text.size() + 1 + 63) / 64 * 64);
  text.resize(whole - 10 - 1, ' ');
  const std::size_t length = text.size() + 1;
  if (length > 0xFFFF) throw BadInput("kelvm-apply: an array of too many dimensions");
  return std::string(npy_magic) + '\1' + '\0' + char(length & 0xFF) + char(length >> 8) + text + '\n';
}

#define INSTANTIATE(Real)                                                                                              \
  template Real parse_number<Real>(const std::string&);                                                                \
  template void append_number<Real>(std::string&, Real);
INSTANTIATE(float)
INSTANTIATE(double)
