// The bits of all functions, hashed, against the table that is checked in: the same from every compiler, at every
// optimisation and on every processor. A function that differs is shown with the first element where two builds part.
//
// A row of the table is a function and the hash that all builds have, or two: that of the SSE4.1 build and that of the
// AVX2 and AVX-512 builds. `estimates` instead stands for a function whose formula starts from the processor's
// estimates of reciprocals and roots: its bits are its processor's own. --write keeps that word, which a person has put
// there.
//
// With --gathers: the wide builds with lookups by gather instructions, whatever this processor prefers.
#include "driver.hpp"
#include "limits.hpp"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <immintrin.h>
#include <iostream>
#include <map>
#include <random>
#include <sstream>
#include <stdexcept>

namespace {

using namespace driver;
using harness::Function;
using harness::Library;

const std::vector<std::string> builds{"sse41", "avx2", "avx512"};
/// What processors load that prefer gather instructions; no functions of SSE4.1 do.
const std::vector<std::string> gathering_builds{"avx2_gathers", "avx512_gathers"};

/// The elements of a function's calls. They come from integers alone, so that they are the same everywhere.
struct Inputs {
  int alone; // the first so many make a call each; the others go 101 to a call: blocks, single vectors and a tail
  std::vector<Element> elements;

  explicit Inputs(const Function& function) : elements(special_elements(function)) {
    std::mt19937_64 random(20);
    const int fraction_bits = function.format().digits - 1, bias = function.format().exponent_max - 1;
    const std::size_t sign_place = 8 * function.part_size() - 1;
    const std::uint64_t fraction_mask = (std::uint64_t{1} << fraction_bits) - 1;
    const auto any_bits = [&] { return function.is_float() ? random() >> 32 : random(); };
    const auto moderate = [&](int reach) { // from 2^-reach to 2^reach
      std::uint64_t fraction = random() & fraction_mask;
      if (random() % 4 == 0) fraction &= ~(fraction_mask >> random() % fraction_bits); // few leading bits
      const std::uint64_t exponent = bias - reach + random() % (2 * reach);
      return random() % 2 << sign_place | exponent << fraction_bits | fraction;
    };
    alone = static_cast<int>(elements.size());
    if (function.shape == harness::Shape::ScalarPower)
      for (Element& e : elements) {
        const Element& other = elements[random() % alone];
        for (int part : {0, 1}) e[2 + part] = random() % 2 ? other[part] : moderate(3);
      }
    for (int i = 0; i < 24000; ++i) {
      constexpr int reaches[] = {1, 2, 5, 30};
      const int reach = reaches[random() % 4];
      const bool any = random() % 5 == 0;
      Element e;
      for (std::uint64_t& part : e) part = any ? any_bits() : moderate(reach);
      if (random() % 16 == 0) e[2] = e[0] ^ random() % 8; // two sources next to each other
      elements.push_back(e);
    }
  }
  int length_from(int i) const { return i < alone ? 1 : std::min(101, static_cast<int>(elements.size()) - i); }
};

/// What a build makes of them.
struct Results {
  struct Ending {
    kelStatus status;
    unsigned flags;
  };
  Bytes destination[2];
  std::vector<Ending> endings; // one a call

  std::uint64_t hash() const { // FNV-1a (Fowler, Noll, Vo)
    std::uint64_t h = 0xcbf29ce484222325;
    const auto add = [&](std::uint64_t x) { h = (h ^ x) * 0x100000001b3; };
    for (const Bytes& bytes : destination)
      for (unsigned char b : bytes) add(b);
    for (const Ending& e : endings) add(static_cast<std::uint64_t>(e.status) << 8 | e.flags);
    return h;
  }
};

Results results_of(const Function& function, const Library& library, const Inputs& inputs) {
  const std::size_t from = function.source_size(), to = function.destination_size();
  const int count = static_cast<int>(inputs.elements.size());
  const Bytes source[2] = {packed(function, 0, inputs.elements), packed(function, 1, inputs.elements)};
  void* const address = library.address(function);
  Results r;
  for (int d = 0; d < function.destinations(); ++d) r.destination[d].resize(count * to);
  for (int i = 0, len; i < count; i += len) {
    len = inputs.length_from(i);
    const void* const second = &source[1][i * from]; // of a scalar power: the first one's exponent is the call's
    const harness::Arguments arguments{&source[0][i * from],
                                       second,
                                       second,
                                       &r.destination[0][i * to],
                                       function.destinations() == 2 ? &r.destination[1][i * to] : nullptr,
                                       len};
    _mm_setcsr(default_csr);
    const kelStatus status = harness::call_at(address, function, arguments);
    // Whether a signalling NaN raises invalid is the compiler's choice between comparisons of bits and of numbers.
    const bool signalling = std::any_of(&inputs.elements[i], &inputs.elements[i] + len, [&](const Element& e) {
      return std::any_of(e.begin(), e.end(),
                         [&](std::uint64_t part) { return is_signalling(function.is_float(), part); });
    });
    r.endings.push_back({status, _mm_getcsr() & (signalling ? honest_flags & ~invalid : honest_flags)});
  }
  _mm_setcsr(default_csr);
  return r;
}

std::string hex(std::uint64_t x) {
  char text[17];
  std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(x));
  return text;
}

/// The first element or call in which two builds differ.
std::string difference(const Function& function, const Inputs& inputs, const Results& a, const Results& b) {
  const std::size_t part = function.part_size(), size = function.destination_size();
  const auto parts = [&](const Bytes& bytes, std::size_t i) {
    std::string text;
    for (std::size_t offset = 0; offset < size; offset += part) {
      std::uint64_t bits = 0;
      std::memcpy(&bits, &bytes[i * size + offset], part);
      text += " 0x" + hex(bits).substr(16 - 2 * part);
    }
    return text;
  };
  std::ostringstream text;
  for (int i = 0, len, call = 0; i < static_cast<int>(inputs.elements.size()); i += len, ++call) {
    len = inputs.length_from(i);
    for (int d = 0; d < function.destinations(); ++d)
      for (int k = i; k < i + len; ++k)
        if (std::memcmp(&a.destination[d][k * size], &b.destination[d][k * size], size) != 0) {
          for (int place = 0; place < 4; ++place) text << " 0x" << hex(inputs.elements[k][place]).substr(16 - 2 * part);
          text << ":" << parts(a.destination[d], k) << " and" << parts(b.destination[d], k);
          return text.str();
        }
    const Results::Ending &x = a.endings[call], &y = b.endings[call];
    if (x.status == y.status && x.flags == y.flags) continue;
    text << " elements " << i << " to " << i + len - 1 << ": status " << x.status << " and " << y.status << std::hex
         << ", flags 0x" << x.flags << " and 0x" << y.flags;
    return text.str();
  }
  return "";
}

/// Whether all builds have to agree: results that leave no choice, and formulas without fused operations.
bool agrees_everywhere(const Function& function, const std::vector<accuracy::Limit>& limits) {
  const accuracy::Limit* limit = accuracy::find_limit(limits, function.name);
  if (limit && limit->ulp == 0.5 && limit->subnormal_ulp == 0) return true;
  for (const char* family : {"Exp", "Sin", "Cos", "SinCos", "CIS"})
    if (function.family == family) return !function.complex_source();
  return false;
}

constexpr const char* estimates = "estimates";

/// A row of the table, or what the libraries give: one word, or those of the SSE4.1 build and of the wide ones.
using Row = std::vector<std::string>;

std::map<std::string, Row, std::less<>> read_table(const std::string& path) {
  std::map<std::string, Row, std::less<>> table;
  std::ifstream file(path);
  std::string line, name, word;
  while (std::getline(file, line)) {
    std::istringstream words(line);
    if (line.starts_with('#') || !(words >> name)) continue;
    while (words >> word) table[name].push_back(word);
  }
  return table;
}

constexpr const char* head =
    "# The bits of every function: a hash of results, statuses and IEEE flags over some 25,000 elements. One hash: "
    "that "
    "of\n"
    "# all builds; two: that of the SSE4.1 build, and that of the AVX2 and AVX-512 builds. `estimates`: the "
    "processor's\n"
    "# own bits. Written by `scripts/hashes --write`; a row changes only together with the reason for it.\n";

int run(const std::string& root, const std::string& table_path, const std::string& limits_path, bool gathers,
        bool write) {
  std::vector<std::pair<std::string, Library>> libraries;
  for (const std::string& build : gathers ? gathering_builds : builds)
    if (harness::processor_runs(build))
      libraries.emplace_back(build, Library(root + "/" + build + "/libkelvm.so"));
    else if (write)
      throw std::runtime_error("this processor cannot run the " + build + " build: nothing written");
    else
      std::cout << "not compared: this processor cannot run the " << build << " build\n";

  const std::vector<accuracy::Limit> limits = accuracy::read_limits(limits_path);
  const auto table = read_table(table_path);
  std::ostringstream fresh;
  fresh << head;
  int differing = 0;
  const auto report = [&](const Function& function, const std::string& text) {
    std::cout << function.name << ": " << text << "\n";
    ++differing;
  };
  for (const Function& function : harness::all_functions()) {
    const Inputs inputs(function);
    const auto found = table.find(function.name);
    const Row expected = found == table.end() ? Row{} : found->second;
    std::vector<Results> results;
    std::vector<std::string> hashes;
    for (const auto& [build, library] : libraries) {
      results.push_back(results_of(function, library, inputs));
      hashes.push_back(hex(results.back().hash()));
    }
    const auto compare = [&](std::size_t a, std::size_t b) {
      if (hashes[a] != hashes[b])
        report(function, libraries[a].first + " and " + libraries[b].first + " differ in" +
                             difference(function, inputs, results[a], results[b]));
      return hashes[a] == hashes[b];
    };
    const bool everywhere = agrees_everywhere(function, limits);
    if (expected == Row{estimates} && !everywhere) {
      fresh << function.name << " " << estimates << "\n";
      continue;
    }
    bool alike = true;
    if (libraries.size() == 3) alike = compare(1, 2);
    if (libraries.size() >= 2 && (everywhere || (!write && expected.size() == 1))) alike = compare(0, 1) && alike;
    Row row{hashes.front()};
    if (hashes.back() != hashes.front()) row.push_back(hashes.back());
    fresh << function.name;
    for (const std::string& word : row) fresh << " " << word;
    fresh << "\n";
    if (write || !alike) continue;
    if (expected.empty()) report(function, "not in the table");
    for (std::size_t i = 0; i < hashes.size() && !expected.empty(); ++i)
      if (const std::string& word = libraries[i].first == "sse41" ? expected.front() : expected.back();
          hashes[i] != word) {
        report(function, libraries[i].first + " has " + hashes[i] + ", the table " + word);
        break;
      }
  }
  if (differing != 0) {
    std::cout << differing << " differences\n";
    return 1;
  }
  if (write) std::ofstream(table_path) << fresh.str();
  return 0;
}

} // namespace

int main(int argc, char** argv) {
  const std::string_view option = argc == 5 ? argv[4] : "";
  const bool write = option == "--write", gathers = option == "--gathers";
  if (argc != 4 && !write && !gathers) {
    std::cerr << "usage: kelvm-identity BUILD_TREE HASHES LIMITS [--write | --gathers]\n";
    return 2;
  }
  try {
    return run(argv[1], argv[2], argv[3], gathers, write);
  } catch (const std::exception& e) {
    std::cerr << e.what() << "\n";
    return 2;
  }
}
