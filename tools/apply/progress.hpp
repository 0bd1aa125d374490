// A line on the terminal for work that takes over a second.
#pragma once

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <unistd.h>

class Progress {
public:
  ~Progress() {
    if (shown_) std::fputs("\r\033[K", stderr);
  }

  /// Without a share of what is to be done, the line has no bar.
  void show(std::uint64_t elements, std::optional<double> share) {
    const auto now = Clock::now();
    if (!terminal_ || now < next_) return;
    next_ = now + std::chrono::milliseconds(200);
    shown_ = true;
    std::fprintf(stderr, "\r\033[K%.4g million elements", double(elements) / 1e6);
    if (!share || *share <= 0) return;
    const double seconds = std::chrono::duration<double>(now - start_).count();
    const std::size_t filled = std::size_t(40 * *share);
    std::fprintf(stderr, "  [%s%s] %.0f %%, %.0f s left", std::string(filled, '#').c_str(),
                 std::string(40 - filled, '.').c_str(), 100 * *share, seconds / *share - seconds);
  }

private:
  using Clock = std::chrono::steady_clock;
  const bool terminal_ = isatty(STDERR_FILENO);
  const Clock::time_point start_ = Clock::now();
  Clock::time_point next_ = start_ + std::chrono::seconds(1);
  bool shown_ = false;
};
