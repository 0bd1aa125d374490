#include "block.hpp"

#include <stdexcept>

namespace reference {

template <class T> void Block::call_parts(std::span<const Arguments> arguments) {
  const std::size_t n = arguments.size(), width = function_.complex_source() ? 2 : 1;
  const auto array = [](std::vector<char>& bytes, std::size_t count) {
    bytes.resize(count * sizeof(T));
    return reinterpret_cast<T*>(bytes.data());
  };
  T* source[2];
  for (int s = 0; s < 2; ++s) {
    source[s] = array(source_[s], n * width);
    for (std::size_t i = 0; i < n; ++i)
      for (std::size_t c = 0; c < width; ++c)
        source[s][width * i + c] = static_cast<T>(arguments[i].parts[2 * static_cast<std::size_t>(s) + c]);
  }
  // Components lie beside each other in one complex destination, or apart in two real ones.
  const std::size_t pair = function_.complex_destination() ? 2 : 1;
  T* destination[2] = {array(destination_[0], n * pair), array(destination_[1], n)};

  call_ = {source[0], source[1], source[1], destination[0], destination[1], static_cast<int>(n)};
  status_ = harness::call_at(address_, function_, call_);
  if (status_ < 0) throw std::runtime_error(std::string(function_.name) + " refuses a block");

  for (std::size_t c = 0; c < 2; ++c) {
    results_[c].resize(n);
    const T* from = pair == 2 ? destination[0] + c : destination[c];
    for (std::size_t i = 0; i < n; ++i) results_[c][i] = from[pair * i];
    pointers_[c] = results_[c].data();
  }
}

const kelStatus* Block::statuses() {
  const std::size_t elements = static_cast<std::size_t>(call_.len);
  statuses_.assign(elements, kelStatusOk);
  if (status_ == kelStatusOk) return statuses_.data();
  const auto at = [&](const void* source, std::size_t i) {
    return static_cast<const char*>(source) + i * function_.source_size();
  };
  for (std::size_t i = 0; i < elements; ++i) {
    char destination[2][16];
    statuses_[i] = harness::call_at(
        address_, function_, {at(call_.src1, i), at(call_.src2, i), call_.scalar, destination[0], destination[1], 1});
  }
  return statuses_.data();
}

void Block::call(std::span<const Arguments> arguments) {
  if (function_.is_float())
    call_parts<float>(arguments);
  else
    call_parts<double>(arguments);
}

} // namespace reference
