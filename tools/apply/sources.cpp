#include "sources.hpp"

#include <chrono>

namespace {

template <class Real> std::vector<Real> parse_exponent(const std::string& text, int parts) {
  std::vector<Real> found;
  for (std::size_t begin = 0; begin <= text.size();) {
    const std::size_t end = std::min(text.find(',', begin), text.size());
    try {
      found.push_back(parse_number<Real>(text.substr(begin, end - begin)));
    } catch (const std::exception&) {
      found.clear();
      break;
    }
    begin = end + 1;
  }
  if (int(found.size()) != parts)
    throw BadInput("kelvm-apply: the exponent \"" + text + "\" is not " +
                   (parts == 1 ? "a number of the function's type" : "a pair RE,IM of numbers of the function's type"));
  return found;
}

} // namespace

template <class Real> Sources<Real>::Sources(const Options& options) : function_(*options.function) {
  if (function_.takes_exponent) exponent_ = parse_exponent<Real>(options.exponent, function_.source_parts);
  for (const std::string& file : options.inputs) inputs_.emplace_back(file, options.from, function_.source_parts);
  const auto& first = inputs_.front().layout();
  const auto& second = inputs_.back().layout();
  if (first && second && *first != *second)
    throw BadInput(inputs_.back().file().name() + ": is an array of another shape or order than " +
                   inputs_.front().file().name());
  results_.resize(std::size_t(piece_length * function_.results()));
}

template <class Real> bool Sources<Real>::next(Piece<Real>& piece) {
  const std::size_t parts = std::size_t(function_.source_parts);
  std::span<const Real> read[2];
  for (std::size_t i = 0; i < inputs_.size(); ++i) {
    read[i] = inputs_[i].read(piece_length * parts);
    if (read[i].size() % parts != 0)
      throw inputs_[i].complaint("an odd count of numbers, but complex numbers are pairs");
    piece.sources[i] = read[i].data();
  }
  piece.elements = int(read[0].size() / parts);
  if (inputs_.size() == 2 && read[0].size() != read[1].size()) {
    const Input<Real>& shorter = inputs_[read[0].size() < read[1].size() ? 0 : 1];
    const Input<Real>& longer = inputs_[read[0].size() < read[1].size() ? 1 : 0];
    throw shorter.complaint("ends after " +
                            std::to_string(elements_ + std::min(read[0].size(), read[1].size()) / parts) +
                            " elements, before " + longer.file().name() + " does");
  }
  if (piece.elements == 0) {
    if (elements_ == 0) throw inputs_[0].complaint("holds no numbers");
    return false;
  }
  for (int i = 0; i < function_.destinations; ++i)
    piece.results[i] = results_.data() + i * piece_length * function_.destination_parts;
  const auto start = std::chrono::steady_clock::now();
  if (const kelStatus status = compute(piece)) status_ = status;
  seconds_ += std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  elements_ += std::uint64_t(piece.elements);
  return true;
}

template <class Real> kelStatus Sources<Real>::compute(const Piece<Real>& piece) {
  return function_.call({{piece.sources[0], piece.sources[1]},
                         exponent_.data(),
                         {const_cast<Real*>(piece.results[0]), const_cast<Real*>(piece.results[1])},
                         piece.elements});
}

template <class Real> std::optional<double> Sources<Real>::share_done() const {
  const InputFile& file = inputs_.front().file();
  if (!file.size()) return std::nullopt;
  return double(file.position()) / double(*file.size());
}

template class Sources<float>;
template class Sources<double>;
