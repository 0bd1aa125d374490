// Numbers in files: text (words between white space, '#' starts a comment) or raw (the bytes of floats or doubles).
#pragma once

#include <cstddef>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

/// Something wrong with what the user gave: one line, with file and line where there is one.
struct BadInput : std::runtime_error {
  using std::runtime_error::runtime_error;
};

enum class Format { text, raw };

/// A file's numbers, in the order in which they stand there.
template <class Real> struct Numbers {
  std::string file;
  std::vector<Real> values;
  std::size_t last_line = 1; // of the last number; counted in text only
  Format format = Format::text;

  /// A complaint about where the numbers end.
  BadInput ends_wrong(const std::string& what) const;
};

/// The number that the whole word is, correctly rounded; "inf", "nan" and hexadecimal numbers included. Throws
/// std::invalid_argument, or std::range_error ("too large" or "too small") for a number that the type would make
/// infinite or zero.
template <class Real> Real parse_number(const std::string& word);

/// Reads all of a file, or of standard input where its name is "-". Throws BadInput.
template <class Real> Numbers<Real> read_numbers(const std::string& file, Format format);

/// The numbers as bytes to be written: in text, `columns` of them a line, in the fewest digits that read back the same.
template <class Real> std::string format_numbers(std::span<const Real> values, int columns, Format format);

/// Writes the bytes to a file, or to standard output where its name is "-". A regular file appears whole or not at all:
/// a new one is written beside it and takes its place; but one that has other hard links or another owner is written
/// over. Throws BadInput, also where an existing file may not be written.
void write_output(const std::string& file, const std::string& bytes);
