#include "files.hpp"

#include "numbers.hpp"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

std::string error_text() { return std::strerror(errno); }

// The unfinished file that an interrupted program removes.
std::atomic<const char*> unfinished = nullptr;

extern "C" void remove_unfinished(int signal) {
  if (const char* path = unfinished) ::unlink(path);
  std::signal(signal, SIG_DFL);
  std::raise(signal);
}

bool write_all(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t n = ::write(descriptor, bytes.data(), bytes.size());
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) return false;
    bytes.remove_prefix(std::size_t(n));
  }
  return true;
}

} // namespace

Descriptor::~Descriptor() {
  if (value > STDERR_FILENO) ::close(value);
}

InputFile::InputFile(const std::string& name)
    : name_(name == "-" ? "standard input" : name),
      descriptor_(name == "-" ? STDIN_FILENO : ::open(name.c_str(), O_RDONLY | O_CLOEXEC)) {
  struct stat found {};
  if (descriptor_.value < 0 || ::fstat(descriptor_.value, &found) != 0)
    throw BadInput(name_ + ": cannot be read: " + error_text());
  if (!S_ISREG(found.st_mode) || found.st_size == 0) return;
  void* mapping = ::mmap(nullptr, std::size_t(found.st_size), PROT_READ, MAP_PRIVATE, descriptor_.value, 0);
  if (mapping == MAP_FAILED) return; // it can be read all the same
  ::madvise(mapping, std::size_t(found.st_size), MADV_SEQUENTIAL);
  mapping_ = static_cast<const char*>(mapping);
  mapped_ = std::size_t(found.st_size);
  position_ = std::min(std::size_t(std::max<off_t>(0, ::lseek(descriptor_.value, 0, SEEK_CUR))), mapped_);
}

InputFile::~InputFile() {
  if (mapping_) ::munmap(const_cast<char*>(mapping_), mapped_);
}

std::string_view InputFile::next(std::size_t wanted) {
  if (mapping_) return {mapping_ + position_, std::min(wanted, mapped_ - position_)};
  if (filled_ - position_ < wanted) {
    std::copy(buffer_.begin() + std::ptrdiff_t(position_), buffer_.begin() + std::ptrdiff_t(filled_), buffer_.begin());
    passed_ += position_;
    filled_ -= position_;
    position_ = 0;
    if (buffer_.size() < wanted) buffer_.resize(wanted);
    while (filled_ < wanted) {
      const ssize_t n = ::read(descriptor_.value, &buffer_[filled_], buffer_.size() - filled_);
      if (n < 0 && errno == EINTR) continue;
      if (n < 0) throw BadInput(name_ + ": cannot be read: " + error_text());
      if (n == 0) break;
      filled_ += std::size_t(n);
    }
  }
  return {buffer_.data() + position_, std::min(wanted, filled_ - position_)};
}

std::optional<std::uint64_t> InputFile::size() const {
  if (mapping_) return mapped_;
  return std::nullopt;
}

OutputFile::OutputFile(const std::string& name, bool rewinds)
    : name_(name == "-" ? "standard output" : name), descriptor_(STDOUT_FILENO), over_(-1) {
  if (name != "-") {
    std::error_code ignored; // a name that cannot be resolved fails where it is opened
    target_ = std::filesystem::canonical(name, ignored).string();
    if (target_.empty()) target_ = name;
    descriptor_.value = ::open(target_.c_str(), O_WRONLY | O_CLOEXEC);
    struct stat found {};
    const bool exists = descriptor_.value >= 0 && ::fstat(descriptor_.value, &found) == 0;
    if (!exists && errno != ENOENT) fail(); // read-only, say
    const bool regular = exists && S_ISREG(found.st_mode);
    if (!exists || (regular && found.st_nlink == 1 && found.st_uid == ::geteuid())) {
      std::swap(descriptor_.value, over_.value);
      beside_ = target_ + ".new" + std::to_string(::getpid());
      descriptor_.value = ::open(beside_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
      if (descriptor_.value < 0) {
        beside_.clear(); // it is not ours
        fail();
      }
      unfinished = beside_.c_str();
      for (const int signal : {SIGINT, SIGTERM, SIGHUP}) std::signal(signal, remove_unfinished);
      if (exists) (void)!::fchmod(descriptor_.value, found.st_mode & 07777);
      return;
    }
    rewinds = rewinds || regular; // to take its place would cut other names off, or its owner
  }
  if (!rewinds) return;
  std::swap(descriptor_.value, over_.value);
  descriptor_.value = ::open(std::filesystem::temp_directory_path().c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
  if (descriptor_.value < 0) fail();
}

OutputFile::~OutputFile() {
  if (!beside_.empty()) ::unlink(beside_.c_str());
  unfinished = nullptr;
}

void OutputFile::fail() const { throw BadInput(name_ + ": cannot be written: " + error_text()); }

void OutputFile::write(std::string_view bytes) {
  if (!write_all(descriptor_.value, bytes)) fail();
}

void OutputFile::rewrite_start(std::string_view bytes) {
  if (::pwrite(descriptor_.value, bytes.data(), bytes.size(), 0) != ssize_t(bytes.size())) fail();
}

void OutputFile::finish() {
  if (!beside_.empty()) {
    const int descriptor = descriptor_.value;
    descriptor_.value = -1;
    if (::close(descriptor) != 0 || ::rename(beside_.c_str(), target_.c_str()) != 0) fail();
    unfinished = nullptr;
    beside_.clear();
    return;
  }
  if (over_.value < 0) return;
  std::vector<char> buffer(1 << 20);
  off_t done = 0;
  for (ssize_t n; (n = ::pread(descriptor_.value, buffer.data(), buffer.size(), done)) != 0; done += n)
    if (n < 0 || !write_all(over_.value, {buffer.data(), std::size_t(n)})) fail();
  struct stat found {};
  if (::fstat(over_.value, &found) == 0 && S_ISREG(found.st_mode) && over_.value != STDOUT_FILENO &&
      ::ftruncate(over_.value, done) != 0)
    fail();
}
