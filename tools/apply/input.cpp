#include "input.hpp"

#include <algorithm>
#include <cstring>

namespace {

constexpr std::size_t chunk = 1 << 18; // bytes of text that are looked at together

bool is_space(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

/// The word as a person should see it in a complaint: not endless, not with control characters.
std::string quoted(std::string word) {
  if (word.size() > 40) word = word.substr(0, 40) + "...";
  for (char& c : word)
    if (static_cast<unsigned char>(c) < ' ' || c == 0x7F) c = '?';
  return '"' + word + '"';
}

} // namespace

template <class Real>
Input<Real>::Input(const std::string& file, Format format, int parts) : file_(file), format_(format) {
  const std::string_view start = file_.next(12);
  if (format_ == Format::unstated) format_ = start.starts_with(npy_magic) ? Format::npy : Format::text;
  if (format_ == Format::text && start.starts_with("\xEF\xBB\xBF")) file_.pass(3); // a byte-order mark
  if (format_ != Format::npy) return;
  if (start.size() < 12 || !start.starts_with(npy_magic)) throw BadInput(file_.name() + ": is no .npy file");
  const std::uint64_t length = npy_header_length(start);
  if (length > 0x10000 || file_.next(length).size() < length) throw BadInput(file_.name() + ": has a broken header");
  layout_ = parse_npy_header(file_.next(length), file_.name());
  file_.pass(length);
  if (layout_->type != npy_type<Real>(parts))
    throw BadInput(file_.name() + ": has elements of type " + layout_->type + ", but the function takes " +
                   npy_type<Real>(parts));
  left_ = layout_->elements(file_.name());
  if (__builtin_mul_overflow(left_, std::uint64_t(parts), &left_))
    throw BadInput(file_.name() + ": its shape has too many elements");
}

template <class Real> std::span<const Real> Input<Real>::read(std::size_t count) {
  if (format_ == Format::text) return read_words(count);
  count = std::size_t(std::min<std::uint64_t>(count, left_));
  const std::string_view bytes = file_.next(count * sizeof(Real));
  const bool promised = format_ == Format::npy && bytes.size() < count * sizeof(Real);
  if (promised || bytes.size() % sizeof(Real) != 0) {
    file_.pass(bytes.size());
    throw complaint(promised ? "ends before the array that its header promises"
                             : std::string("ends inside a ") + type_name<Real>);
  }
  file_.pass(bytes.size());
  if (format_ == Format::npy) left_ -= count;
  const std::size_t n = bytes.size() / sizeof(Real);
  if (reinterpret_cast<std::uintptr_t>(bytes.data()) % alignof(Real) == 0)
    return {reinterpret_cast<const Real*>(bytes.data()), n};
  values_.resize(n);
  std::memcpy(values_.data(), bytes.data(), bytes.size());
  return values_;
}

template <class Real> std::span<const Real> Input<Real>::read_words(std::size_t count) {
  values_.clear();
  for (std::size_t wanted = chunk; values_.size() < count;) {
    const std::string_view bytes = file_.next(wanted);
    const bool last = bytes.size() < wanted;
    std::size_t i = 0; // where a word or a comment begins that the bytes may not hold whole
    while (i < bytes.size() && values_.size() < count) {
      if (bytes[i] == '\n') ++line_;
      if (is_space(bytes[i])) {
        ++i;
        continue;
      }
      const std::size_t end = bytes[i] == '#'
                                  ? bytes.find('\n', i)
                                  : std::size_t(std::find_if(bytes.begin() + std::ptrdiff_t(i), bytes.end(),
                                                             [](char c) { return is_space(c) || c == '#'; }) -
                                                bytes.begin());
      if (end >= bytes.size() && !last) break;
      if (bytes[i] != '#') {
        const std::string word(bytes.substr(i, end - i));
        const std::string place = file_.name() + ":" + std::to_string(line_) + ": ";
        try {
          values_.push_back(parse_number<Real>(word));
        } catch (const std::invalid_argument&) {
          throw BadInput(place + quoted(word) + " is not a number");
        } catch (const std::range_error& why) {
          throw BadInput(place + quoted(word) + " is " + why.what() + " for a " + type_name<Real>);
        }
        last_line_ = line_;
      }
      i = std::min(end, bytes.size());
    }
    file_.pass(i);
    if (last && i == bytes.size()) break;
    wanted = i == 0 ? 2 * wanted : chunk; // a long comment
  }
  return values_;
}

template <class Real> BadInput Input<Real>::complaint(const std::string& what) const {
  return BadInput(file_.name() +
                  (format_ == Format::text ? ":" + std::to_string(last_line_) + ": "
                                           : ": byte " + std::to_string(file_.position()) + ": ") +
                  what);
}

template class Input<float>;
template class Input<double>;
