// What every function promises, whatever it computes: checks, position independence, aliasing, bounds, threads.
#include "driver.hpp"

#include <algorithm>
#include <barrier>
#include <climits>
#include <csetjmp>
#include <csignal>
#include <cstring>
#include <sys/mman.h>
#include <thread>

namespace {

using namespace driver;

class Contract : public testing::TestWithParam<Callable> {
protected:
  const Callable& s = GetParam();
  const harness::Function& function = s.function;
  const Sample& sample = sample_of(s);
  const std::size_t from_size = function.source_size(), to_size = function.destination_size();
};

INSTANTIATE_TEST_SUITE_P(Functions, Contract, testing::ValuesIn(callables()),
                         [](const auto& info) { return info.param.name(); });

TEST_P(Contract, FaultyArgumentsAreNamedInOrderAndNothingIsWritten) {
  const Bytes source = sample.plain.source[0];
  Bytes untouched(64, 0xA5), arrays[2] = {untouched, untouched};
  const bool second = function.sources() == 2, two = function.destinations() == 2;
  for (int len : {0, -1, INT_MIN, 1, 70})
    for (int nulls = 0; nulls < 16; ++nulls) {
      if (((nulls & 2) && !second) || ((nulls & 8) && !two) || (nulls == 0 && len > 0)) continue;
      const kelStatus expected = nulls == 0                                     ? kelStatusSizeError
                                 : len > 0                                      ? kelStatusNullPtrError
                                 : function.order == harness::Order::CountFirst ? kelStatusSizeError
                                                                                : kelStatusNullPtrError;
      const Ending ending =
          s.call({nulls & 1 ? nullptr : source.data(), nulls & 2 ? nullptr : source.data(), nullptr,
                  nulls & 4 ? nullptr : arrays[0].data(), nulls & 8 ? nullptr : arrays[1].data(), len});
      ASSERT_EQ(ending.status, expected) << s << ", length " << len << ", null pointers " << nulls;
      ASSERT_EQ(ending.csr, default_csr) << s;
      ASSERT_TRUE(arrays[0] == untouched && arrays[1] == untouched) << s;
    }
}

// Up to 100: more than the largest block, a single vector and a tail.
TEST_P(Contract, EveryLengthAtEveryOffsetGivesWhatTheElementsGiveAlone) {
  for (const Strip* strip : {&sample.mixed, &sample.plain})
    for (int len = 1; len <= 100; ++len)
      for (int from = 0; from < 32; from += 3) ASSERT_TRUE(as_alone(s, *strip, from, len));
  for (const Strip* strip : {&sample.all, &sample.common})
    for (int from = 0; from < 40; ++from) ASSERT_TRUE(as_alone(s, *strip, from, strip->count - from));
}

TEST_P(Contract, ADestinationMayBeASource) {
  if (to_size > from_size) GTEST_SKIP() << "results are larger than sources";
  const Strip& strip = sample.mixed;
  for (int len : {1, 2, 3, 5, 8, 17, 67, 220})
    for (int way = 0; way < std::max(function.sources(), function.destinations()); ++way) {
      Bytes x = strip.source[0], y = strip.source[1], other(len * to_size);
      Ending ending;
      const void *dst1 = x.data(), *dst2 = other.data();
      if (function.destinations() == 2 && way % 2 == 1) std::swap(dst1, dst2);
      if (function.sources() == 2 && way % 2 == 1) dst1 = y.data();
      ending = s.call({x.data(), y.data(), nullptr, const_cast<void*>(dst1), const_cast<void*>(dst2), len});
      ASSERT_TRUE(as_alone(s, strip, 0, len, ending, dst1, dst2)) << "in place, way " << way;
    }
  if (function.sources() == 2) { // one array is both sources and the destination
    const Strip twice = [&] {
      std::vector<Element> elements = special_elements(function);
      for (Element& e : elements) std::copy_n(e.begin(), 2, e.begin() + 2);
      elements.resize(200);
      return alone(s, elements);
    }();
    Bytes x = twice.source[0];
    const Ending ending = s.call({x.data(), x.data(), nullptr, x.data(), nullptr, twice.count});
    ASSERT_TRUE(as_alone(s, twice, 0, twice.count, ending, x.data(), nullptr)) << "one array for all";
  }
}

TEST_P(Contract, ArraysNeedNoAlignment) {
  constexpr int len = 83;
  const Strip& strip = sample.mixed;
  Bytes x(len * from_size + 64), y = x, z(len * to_size + 64), w = z;
  for (std::size_t source = 0; source <= 16; ++source)
    for (std::size_t destination = 0; destination <= 16; ++destination) {
      const std::size_t second = (source * 7 + 3) % 17, other = (destination * 5 + 1) % 17;
      std::copy_n(strip.source[0].begin(), len * from_size, x.begin() + source);
      if (function.sources() == 2) std::copy_n(strip.source[1].begin(), len * from_size, y.begin() + second);
      const Ending ending = s.call({&x[source], &y[second], nullptr, &z[destination], &w[other], len});
      ASSERT_TRUE(as_alone(s, strip, 0, len, ending, &z[destination], &w[other]))
          << "byte offsets " << source << ", " << second << " to " << destination << ", " << other;
    }
}

/// A page between two that may not be touched.
class GuardedPage {
public:
  static constexpr std::size_t size = 4096;
  GuardedPage()
      : base_(static_cast<unsigned char*>(mmap(nullptr, 3 * size, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0))) {
    allow(PROT_READ | PROT_WRITE);
  }
  ~GuardedPage() { munmap(base_, 3 * size); }
  void allow(int protection) { mprotect(begin(), size, protection); }
  unsigned char* begin() { return base_ + size; }
  unsigned char* end() { return base_ + 2 * size; }

private:
  unsigned char* base_;
};

sigjmp_buf back_from_fault;

struct FaultHandler {
  struct sigaction before;
  FaultHandler() {
    struct sigaction ours = {};
    ours.sa_handler = [](int) { siglongjmp(back_from_fault, 1); };
    sigaction(SIGSEGV, &ours, &before);
  }
  ~FaultHandler() { sigaction(SIGSEGV, &before, nullptr); }
};

/// Makes the call unless it ends in a fault.
bool call_survives(const Callable& s, const harness::Arguments& arguments, Ending& ending) {
  if (sigsetjmp(back_from_fault, 1) != 0) return false;
  ending = s.call(arguments);
  return true;
}

TEST_P(Contract, NothingOutsideTheArraysIsTouched) {
  static GuardedPage source[2], destination[2];
  const int count = static_cast<int>(GuardedPage::size / std::max(from_size, to_size));
  std::vector<int> order(count);
  for (int i = 0; i < count; ++i) order[i] = i % sample.all.count;
  const Strip strip = pick(s, sample.all, order, count);
  for (int i = 0; i < function.sources(); ++i) source[i].allow(PROT_READ | PROT_WRITE);
  const FaultHandler handler;
  for (int len = 1; len <= std::min(100, count); ++len)
    for (bool at_end : {false, true}) {
      const int from = at_end ? count - len : 0;
      const auto place = [&](GuardedPage& page, std::size_t size) {
        return at_end ? page.end() - len * size : page.begin();
      };
      for (int i = 0; i < function.sources(); ++i) {
        source[i].allow(PROT_READ | PROT_WRITE);
        std::memcpy(place(source[i], from_size), &strip.source[i][from * from_size], len * from_size);
        source[i].allow(PROT_READ);
      }
      unsigned char *dst1 = place(destination[0], to_size), *dst2 = place(destination[1], to_size);
      Ending ending;
      ASSERT_TRUE(call_survives(s, {place(source[0], from_size), place(source[1], from_size), nullptr, dst1, dst2, len},
                                ending))
          << s << ": " << len << " elements, touched memory outside the arrays or wrote to a source; arrays at the "
          << (at_end ? "end" : "start") << " of a page";
      ASSERT_TRUE(as_alone(s, strip, from, len, ending, dst1, dst2));
    }
}

// Both threads run the same function at the same time, one on ordinary elements, one on all kinds.
TEST(Threads, CallsAtTheSameTimeDoNotDisturbEachOther) {
  const std::vector<Callable> all = callables();
  for (const Callable& s : all) sample_of(s);
  testing::AssertionResult results[2] = {testing::AssertionSuccess(), testing::AssertionSuccess()};
  std::barrier together(2);
  const auto work = [&](int thread) {
    for (const Callable& s : all) {
      const Strip& strip = thread == 0 ? sample_of(s).mixed : sample_of(s).plain;
      together.arrive_and_wait();
      for (int round = 0; round < 50; ++round)
        if (const auto r = as_alone(s, strip, round % 20, 200); !r) results[thread] = r;
    }
  };
  std::thread first(work, 0), second(work, 1);
  first.join();
  second.join();
  EXPECT_TRUE(results[0]);
  EXPECT_TRUE(results[1]);
}

// Real Add, Sub, Mul, Sqr: any overlap gives what a forward loop over the elements gives.
class Overlap : public testing::TestWithParam<Callable> {};

std::vector<Callable> overlapping() {
  std::vector<Callable> list = callables();
  std::erase_if(list, [](const Callable& s) {
    const bool plain = s.function.family == "Add" || s.function.family == "Sub" || s.function.family == "Mul" ||
                       s.function.family == "Sqr";
    return !plain || s.function.complex_source();
  });
  return list;
}
INSTANTIATE_TEST_SUITE_P(Functions, Overlap, testing::ValuesIn(overlapping()),
                         [](const auto& info) { return info.param.name(); });

TEST_P(Overlap, IsAForwardLoop) {
  const Callable& s = GetParam();
  const int size = static_cast<int>(s.function.part_size()), room = 1024;
  constexpr int reach = 264; // beyond the longest block
  const Strip& plain = sample_of(s).plain;
  Bytes start;
  while (start.size() < 2 * room) start.insert(start.end(), plain.source[0].begin(), plain.source[0].end());
  const auto compare = [&](int shift1, int shift2, int len) {
    Bytes at_once = start, forward = start;
    const auto call = [&](Bytes& array, int i, int n) {
      unsigned char* dst = &array[room + i * size];
      s.call({dst + shift1, dst + shift2, nullptr, dst, nullptr, n});
    };
    call(at_once, 0, len);
    for (int i = 0; i < len; ++i) call(forward, i, 1);
    ASSERT_TRUE(at_once == forward) << s << ": sources " << shift1 << " and " << shift2
                                    << " bytes from the destination, length " << len;
  };
  for (int len : {1, 7, 33, 67})
    for (int shift = -reach; shift <= reach; ++shift) { // byte by byte
      ASSERT_NO_FATAL_FAILURE(compare(shift, 500, len));
      ASSERT_NO_FATAL_FAILURE(compare(500, shift, len));
    }
  for (int len : {7, 67})
    for (int shift1 = -reach; shift1 <= reach; shift1 += 3 * size)
      for (int shift2 = -reach; shift2 <= reach; shift2 += size) ASSERT_NO_FATAL_FAILURE(compare(shift1, shift2, len));
}

} // namespace
