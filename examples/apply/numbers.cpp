#include "numbers.hpp"

#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace {

template <class Real> constexpr const char* type_name = sizeof(Real) == 8 ? "double" : "float";

std::string shown(const std::string& file) { return file == "-" ? "standard input" : file; }

std::string error_text() { return std::strerror(errno); }

std::string read_bytes(const std::string& file) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream(file == "-" ? stdin : std::fopen(file.c_str(), "rb"),
                                                               [](std::FILE* f) { return f == stdin ? 0 : fclose(f); });
  if (!stream) throw BadInput(shown(file) + ": cannot be read: " + error_text());
  std::string bytes;
  std::vector<char> buffer(1 << 20);
  while (const std::size_t n = std::fread(buffer.data(), 1, buffer.size(), stream.get()))
    bytes.append(buffer.data(), n);
  if (std::ferror(stream.get())) throw BadInput(shown(file) + ": cannot be read: " + error_text());
  return bytes;
}

bool is_space(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

/// The word as a person should see it in a complaint: not endless, not with control characters.
std::string quoted(std::string word) {
  if (word.size() > 40) word = word.substr(0, 40) + "...";
  for (char& c : word)
    if (static_cast<unsigned char>(c) < ' ' || c == 0x7F) c = '?';
  return '"' + word + '"';
}

template <class Real> void read_text(const std::string& bytes, Numbers<Real>& numbers) {
  std::size_t line = 1;
  for (std::size_t i = bytes.starts_with("\xEF\xBB\xBF") ? 3 : 0; i < bytes.size();) { // past a byte-order mark
    if (bytes[i] == '\n') ++line;
    if (bytes[i] == '#') {
      i = std::min(bytes.find('\n', i), bytes.size());
    } else if (is_space(bytes[i])) {
      ++i;
    } else {
      const std::size_t begin = i;
      while (i < bytes.size() && !is_space(bytes[i]) && bytes[i] != '#') ++i;
      const std::string word = bytes.substr(begin, i - begin);
      const std::string place = numbers.file + ":" + std::to_string(line) + ": ";
      try {
        numbers.values.push_back(parse_number<Real>(word));
      } catch (const std::invalid_argument&) {
        throw BadInput(place + quoted(word) + " is not a number");
      } catch (const std::range_error& why) {
        throw BadInput(place + quoted(word) + " is " + why.what() + " for a " + type_name<Real>);
      }
      numbers.last_line = line;
    }
  }
}

template <class Real> void read_raw(const std::string& bytes, Numbers<Real>& numbers) {
  if (bytes.size() % sizeof(Real) != 0)
    throw BadInput(numbers.file + ": byte " + std::to_string(bytes.size()) + ": ends inside a " + type_name<Real>);
  numbers.values.resize(bytes.size() / sizeof(Real));
  if (!bytes.empty()) std::memcpy(numbers.values.data(), bytes.data(), bytes.size());
}

/// A file descriptor and, until it is renamed, the temporary file behind it.
struct NewFile {
  std::string path;
  int descriptor;
  bool keep = false;

  ~NewFile() {
    if (descriptor >= 0) ::close(descriptor);
    if (!keep) ::unlink(path.c_str());
  }
};

void write_all(int descriptor, const std::string& bytes, const std::string& file) {
  for (std::size_t done = 0; done < bytes.size();) {
    const ssize_t n = ::write(descriptor, bytes.data() + done, bytes.size() - done);
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) throw BadInput(file + ": cannot be written: " + error_text());
    done += static_cast<std::size_t>(n);
  }
}

} // namespace

template <class Real> BadInput Numbers<Real>::ends_wrong(const std::string& what) const {
  const std::string place = format == Format::text ? ":" + std::to_string(last_line) + ": "
                                                   : ": byte " + std::to_string(values.size() * sizeof(Real)) + ": ";
  return BadInput(file + place + what);
}

template <class Real> Real parse_number(const std::string& word) {
  char* end = nullptr;
  Real value;
  errno = 0;
  if constexpr (sizeof(Real) == 8)
    value = std::strtod(word.c_str(), &end);
  else
    value = std::strtof(word.c_str(), &end);
  if (word.empty() || is_space(word[0]) || end != word.c_str() + word.size()) throw std::invalid_argument(word);
  // strtod reports subnormal numbers, too: those are as good as the type can do.
  if (errno == ERANGE && std::isinf(value)) throw std::range_error("too large");
  if (errno == ERANGE && value == 0) throw std::range_error("too small");
  return value;
}

template <class Real> Numbers<Real> read_numbers(const std::string& file, Format format) {
  Numbers<Real> numbers;
  numbers.file = shown(file);
  numbers.format = format;
  const std::string bytes = read_bytes(file);
  if (format == Format::text)
    read_text(bytes, numbers);
  else
    read_raw(bytes, numbers);
  if (numbers.values.empty()) throw numbers.ends_wrong("holds no numbers");
  return numbers;
}

template <class Real> std::string format_numbers(std::span<const Real> values, int columns, Format format) {
  if (format == Format::raw) return {reinterpret_cast<const char*>(values.data()), values.size_bytes()};
  std::string text;
  char word[64];
  int column = 0;
  for (const Real value : values) {
    text.append(word, std::to_chars(word, word + sizeof word, value).ptr);
    column = (column + 1) % columns;
    text += column == 0 ? '\n' : ' ';
  }
  return text;
}

void write_output(const std::string& file, const std::string& bytes) {
  if (file == "-") return write_all(STDOUT_FILENO, bytes, "standard output");

  std::error_code ignored; // a name that cannot be resolved fails where it is opened
  std::string target = std::filesystem::canonical(file, ignored).string();
  if (target.empty()) target = file;
  struct stat found {};
  NewFile old{target, ::open(target.c_str(), O_WRONLY), true};
  const bool exists = old.descriptor >= 0 && ::fstat(old.descriptor, &found) == 0;
  if (!exists && errno != ENOENT) throw BadInput(file + ": cannot be written: " + error_text()); // read-only, say
  if (exists && !(S_ISREG(found.st_mode) && found.st_nlink == 1 && found.st_uid == ::geteuid())) {
    // A device, or a file with other names or of someone else: to take its place would cut those off.
    write_all(old.descriptor, bytes, file);
    if (S_ISREG(found.st_mode) && ::ftruncate(old.descriptor, off_t(bytes.size())) != 0)
      throw BadInput(file + ": cannot be written: " + error_text());
    return;
  }
  const std::string path = target + ".new" + std::to_string(::getpid());
  NewFile fresh{path, ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL, 0666)};
  if (fresh.descriptor < 0) {
    fresh.keep = true; // it is not ours
    throw BadInput(file + ": cannot be written: " + error_text());
  }
  if (exists) (void)!::fchmod(fresh.descriptor, found.st_mode & 07777);
  write_all(fresh.descriptor, bytes, file);
  const bool closed = ::close(fresh.descriptor) == 0;
  fresh.descriptor = -1;
  if (!closed || ::rename(path.c_str(), target.c_str()) != 0)
    throw BadInput(file + ": cannot be written: " + error_text());
  fresh.keep = true;
}

#define INSTANTIATE(Real)                                                                                              \
  template struct Numbers<Real>;                                                                                       \
  template Real parse_number<Real>(const std::string&);                                                                \
  template Numbers<Real> read_numbers<Real>(const std::string&, Format);                                               \
  template std::string format_numbers<Real>(std::span<const Real>, int, Format);
INSTANTIATE(float)
INSTANTIATE(double)
