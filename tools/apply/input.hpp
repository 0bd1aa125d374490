// The numbers of an input in any format, piece by piece.
#pragma once

#include "files.hpp"
#include "numbers.hpp"

#include <optional>
#include <span>

template <class Real> class Input {
public:
  /// Elements have so many parts. Where the format is unstated, it is npy where the file starts like one, else text.
  /// Throws BadInput.
  Input(const std::string& file, Format format, int parts);

  /// The next `count` numbers; fewer only at the end of the file. Valid until the next call. Throws BadInput.
  std::span<const Real> read(std::size_t count);

  /// A complaint about where the numbers that were read end.
  BadInput complaint(const std::string& what) const;
  const InputFile& file() const { return file_; }
  /// Of a .npy file.
  const std::optional<Layout>& layout() const { return layout_; }

private:
  std::span<const Real> read_words(std::size_t count);

  InputFile file_;
  Format format_;
  std::optional<Layout> layout_;
  std::uint64_t left_ = UINT64_MAX; // numbers that the header promises
  std::vector<Real> values_;        // parsed from text, or copied to where they are aligned
  std::uint64_t line_ = 1, last_line_ = 1;
};
