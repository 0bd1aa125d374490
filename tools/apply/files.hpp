// Files, standard input and standard output as sequences of bytes.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// A file descriptor, closed at the end.
struct Descriptor {
  int value = -1;

  explicit Descriptor(int d) : value(d) {}
  ~Descriptor();
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
};

/// The bytes of a file, or of standard input where its name is "-", in order. A regular file is mapped, so it may be
/// larger than the memory; of anything else no more is kept than is looked at. All may throw BadInput.
class InputFile {
public:
  explicit InputFile(const std::string& name);
  ~InputFile();

  /// The next `wanted` bytes; fewer only where the file ends. Valid until the next call.
  std::string_view next(std::size_t wanted);
  /// Passes over bytes that next() has shown.
  void pass(std::size_t bytes) { position_ += bytes; }

  const std::string& name() const { return name_; }
  std::uint64_t position() const { return passed_ + position_; }
  /// The number of bytes in all, where it is known beforehand.
  std::optional<std::uint64_t> size() const;

private:
  std::string name_;
  Descriptor descriptor_;
  const char* mapping_ = nullptr;
  std::size_t mapped_ = 0;
  std::vector<char> buffer_;
  std::size_t position_ = 0, filled_ = 0; // in the mapping or the buffer
  std::uint64_t passed_ = 0;              // before the buffer
};

/// A file to be written, or standard output where its name is "-". A regular file appears whole or not at all: a new
/// one is written beside it and takes its place in finish(). One that has other hard links or another owner is written
/// over instead, from a copy that is complete. All may throw BadInput, the constructor also where an existing file may
/// not be written.
class OutputFile {
public:
  /// `rewinds` where the start will be rewritten: then also a pipe gets nothing before finish().
  OutputFile(const std::string& name, bool rewinds);
  ~OutputFile();

  void write(std::string_view bytes);
  void rewrite_start(std::string_view bytes);
  void finish();

private:
  [[noreturn]] void fail() const;

  std::string name_, target_;
  std::string beside_;    // the new file that takes the place of the target, or empty
  Descriptor descriptor_; // of what is written
  Descriptor over_;       // of what the complete copy is written to, or -1
};
