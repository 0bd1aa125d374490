// What the user asked for, and the sources of a function, piece by piece.
#pragma once

#include "functions.hpp"
#include "input.hpp"

#include <deque>

struct Options {
  const Function* function = nullptr;
  std::vector<std::string> inputs;
  std::string output = "-", exponent, compare;
  Format from = Format::unstated, to = Format::unstated;
};

/// The sources and the results of some elements.
template <class Real> struct Piece {
  int elements;
  const Real* sources[2];
  const Real* results[2]; // of each destination
};

template <class Real> class Sources {
public:
  static constexpr int piece_length = 1 << 15; // elements that are computed together: they fit into the cache

  explicit Sources(const Options& options);

  /// Reads a piece and computes it; false behind the last one. Throws BadInput.
  bool next(Piece<Real>& piece);
  /// Computes the last piece once more.
  void again(const Piece<Real>& piece) { compute(piece); }

  std::uint64_t elements() const { return elements_; }
  /// The code of the last element that earned one, as in one call.
  kelStatus status() const { return status_; }
  double seconds() const { return seconds_; } // spent in the library
  /// Of the first source, where it is a .npy file.
  const std::optional<Layout>& layout() const { return inputs_.front().layout(); }
  const std::vector<Real>& exponent() const { return exponent_; }
  /// The part of the first source that was read, if that can be known.
  std::optional<double> share_done() const;

private:
  kelStatus compute(const Piece<Real>& piece);

  const Function& function_;
  std::deque<Input<Real>> inputs_;
  std::vector<Real> exponent_;
  std::vector<Real> results_;
  std::uint64_t elements_ = 0;
  kelStatus status_ = kelStatusOk;
  double seconds_ = 0;
};
