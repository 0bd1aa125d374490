// The three builds give the same bits and the same statuses. The hash of a function's results goes into the XML report
// (--gtest_output=xml), to be compared between machines.
#include "driver.hpp"

#include <cstring>
#include <sstream>

namespace {

using namespace driver;

constexpr int chunk = 101; // of elements a call: blocks, single vectors and a tail in every build

struct Results {
  Bytes destination[2];
  std::vector<kelStatus> status; // one a chunk
};

Results results_of(const Callable& s, const harness::Library& library, const Bytes (&source)[2], int count) {
  const std::size_t from = s.function.source_size(), to = s.function.destination_size();
  Results r{{Bytes(count * to), Bytes(count * to)}, {}};
  for (int i = 0; i < count; i += chunk) {
    const int len = std::min(chunk, count - i);
    const unsigned char* second = source[1].empty() ? nullptr : &source[1][i * from];
    r.status.push_back(s.call_in(library, {&source[0][i * from], second, nullptr, &r.destination[0][i * to],
                                           &r.destination[1][i * to], len})
                           .status);
  }
  return r;
}

std::uint64_t hash(const Results& r) { // FNV-1a
  std::uint64_t h = 0xcbf29ce484222325;
  for (const Bytes& bytes : r.destination)
    for (unsigned char b : bytes) h = (h ^ b) * 0x100000001b3;
  for (kelStatus status : r.status) h = (h ^ static_cast<unsigned>(status)) * 0x100000001b3;
  return h;
}

class Identity : public testing::TestWithParam<Callable> {};
INSTANTIATE_TEST_SUITE_P(Functions, Identity, testing::ValuesIn(callables()),
                         [](const auto& info) { return info.param.name(); });

TEST_P(Identity, AllBuildsGiveTheSameBits) {
  const Callable& s = GetParam();
  std::vector<Element> elements = special_elements(s.function);
  for (const Element& e : domain_elements(s.function, 20000)) elements.push_back(e);
  for (const Element& e : random_elements(s.function, 20000)) elements.push_back(e);
  const int count = static_cast<int>(elements.size());
  const Bytes source[2] = {packed(s.function, 0, elements),
                           s.function.sources() == 2 ? packed(s.function, 1, elements) : Bytes()};
  const Results base = results_of(s, library("sse41"), source, count);
  std::ostringstream hex;
  hex << std::hex << hash(base);
  RecordProperty("hash", hex.str());

  const std::size_t size = s.function.destination_size();
  for (const char* build : {"avx2", "avx512"}) {
    if (!harness::processor_runs(build)) continue;
    const Results other = results_of(s, library(build), source, count);
    for (int d = 0; d < s.function.destinations(); ++d)
      for (int i = 0; i < count; ++i) {
        if (std::memcmp(&base.destination[d][i * size], &other.destination[d][i * size], size) == 0) continue;
        std::ostringstream at;
        at << std::hex;
        for (int place : places_of(s.function)) at << " 0x" << elements[i][place];
        at << ": sse41";
        for (std::size_t p = 0; p < size / s.function.part_size(); ++p)
          at << " 0x" << part_of(base.destination[d], s.function.part_size(), i * size / s.function.part_size() + p);
        at << ", " << build;
        for (std::size_t p = 0; p < size / s.function.part_size(); ++p)
          at << " 0x" << part_of(other.destination[d], s.function.part_size(), i * size / s.function.part_size() + p);
        FAIL() << s << " differs from element " << i << ", destination " << d + 1 << ", source" << at.str();
      }
    for (std::size_t i = 0; i < base.status.size(); ++i)
      ASSERT_EQ(base.status[i], other.status[i]) << s << ", " << build << ": elements from " << i * chunk;
  }
}

TEST(Identity, ProcessorRunsAllBuilds) {
  for (const char* build : {"avx2", "avx512"})
    if (!harness::processor_runs(build))
      GTEST_SKIP() << "this processor cannot run the " << build << " build: not compared";
}

} // namespace
