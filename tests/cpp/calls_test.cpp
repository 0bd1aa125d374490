// Which function of the C interface a call from C++ reaches, and with what: the functions are replaced by ones that
// write down how they were called.
#include "cpp_names.hpp" // CPP_Exp is exp
#include "unequal.hpp"

#include "kelvm/parallel.hpp"

#include <array>
#include <gtest/gtest.h>
#include <limits>
#include <set>
#include <string>

namespace {

struct Call {
  std::string name;
  std::vector<const void*> arrays;
  std::complex<double> exponent;
  int length;
};
std::vector<Call> calls;
std::vector<kelStatus> statuses; // what the calls return, in order; then 0

template <class T> void take(Call& call, T* array) { call.arrays.push_back(array); }
template <class T> void take(Call& call, T exponent) {
  if constexpr (std::is_floating_point_v<T>)
    call.exponent = exponent;
  else
    call.exponent = {exponent.re, exponent.im};
}

template <class... Arguments> kelStatus record(const char* name, int length, Arguments... arguments) {
  calls.push_back({name, {}, {}, length});
  (take(calls.back(), arguments), ...);
  return calls.size() <= statuses.size() ? statuses[calls.size() - 1] : kelStatusOk;
}

using C_32f = float;
using C_64f = double;
using C_32fc = Complex32f;
using C_64fc = Complex64f;
using Part_32fc = float;
using Part_64fc = double;

} // namespace

#define UNARY(name, From, To)                                                                                          \
  kelStatus name(const From* src, To* dst, int len) { return record(#name, len, src, dst); }
#define STUB_Unary(name, type) UNARY(name, C_##type, C_##type)
#define STUB_RealToComplex(name, type) UNARY(name, Part_##type, C_##type)
#define STUB_ComplexToReal(name, type) UNARY(name, C_##type, Part_##type)
#define STUB_Binary(name, type)                                                                                        \
  kelStatus name(const C_##type* src1, const C_##type* src2, C_##type* dst, int len) {                                 \
    return record(#name, len, src1, src2, dst);                                                                        \
  }
#define STUB_ScalarPower(name, type)                                                                                   \
  kelStatus name(const C_##type* src, C_##type value, C_##type* dst, int len) {                                        \
    return record(#name, len, src, value, dst);                                                                        \
  }
#define STUB_TwoOutputs(name, type)                                                                                    \
  kelStatus name(const C_##type* src, C_##type* dst1, C_##type* dst2, int len) {                                       \
    return record(#name, len, src, dst1, dst2);                                                                        \
  }
extern "C" {
#define KELVM_MEMBER(name, family, type, suffix, shape, order) STUB_##shape(name, type)
#include "members.def"
#undef KELVM_MEMBER
}

namespace {

// Arrays to call with: 0 and 1 are sources, 2 and 3 destinations.
template <class C> std::array<kelvm::detail::cpp_type_t<C>, 3> array_of[4];
template <class C, int Index> const auto& source = array_of<C>[Index];
template <class C, int Index> auto& destination = array_of<C>[2 + Index];
const double exponent = 1.5;

#define ARGUMENTS_Unary(type) source<C_##type, 0>, destination<C_##type, 0>
#define ARGUMENTS_Binary(type) source<C_##type, 0>, source<C_##type, 1>, destination<C_##type, 0>
#define ARGUMENTS_ScalarPower(type) source<C_##type, 0>, exponent, destination<C_##type, 0>
#define ARGUMENTS_TwoOutputs(type) source<C_##type, 0>, destination<C_##type, 0>, destination<C_##type, 1>
#define ARGUMENTS_RealToComplex(type) source<Part_##type, 0>, destination<C_##type, 0>
#define ARGUMENTS_ComplexToReal(type) source<C_##type, 0>, destination<Part_##type, 0>

const std::set<std::string> functions = {
#define KELVM_MEMBER(name, family, type, suffix, shape, order) #name,
#include "members.def"
#undef KELVM_MEMBER
};

// The function at a lower accuracy: the one at full accuracy, where the list has no other.
std::string lower(const std::string& full, std::initializer_list<const char*> suffixes) {
  for (const char* suffix : suffixes)
    if (std::string name = full.substr(0, full.rfind('_') + 1) + suffix; functions.contains(name)) return name;
  return full;
}

std::set<std::string> reached;

void expect_one_call(const Call& expected) {
  ASSERT_EQ(calls.size(), 1U) << expected.name;
  EXPECT_EQ(calls[0].name, expected.name);
  EXPECT_EQ(calls[0].arrays, expected.arrays) << expected.name;
  EXPECT_EQ(calls[0].exponent, expected.exponent) << expected.name;
  EXPECT_EQ(calls[0].length, expected.length) << expected.name;
  reached.insert(calls[0].name);
  calls.clear();
}

template <class T, std::size_t N> void expect(Call& call, const std::array<T, N>& range) { take(call, range.data()); }
void expect(Call& call, double number) { take(call, number); }

template <kelvm::accuracy Level> using At = std::integral_constant<kelvm::accuracy, Level>;

template <class Function, class... Arguments>
void expect_levels(const std::string& full, Function function, Arguments&... arguments) {
  Call expected{full, {}, {}, 3};
  (expect(expected, arguments), ...);
  const auto call = [&](auto level) {
    function(level, arguments...);
    expect_one_call(expected);
    function(level, std::execution::seq, arguments...);
    expect_one_call(expected);
  };
  call(At<kelvm::accuracy::full>());
  expected.name = lower(full, {"A21", "A50"});
  call(At<kelvm::accuracy::high>());
  expected.name = lower(full, {"A11", "A26"});
  call(At<kelvm::accuracy::low>());
}

constexpr bool is_full(std::string_view suffix) { return suffix == "A24" || suffix == "A53" || suffix == "exact"; }

TEST(Calls, EveryMemberIsReachedByItsNameTypeAndAccuracy) {
  calls.clear();
#define KELVM_MEMBER(name, family, type, suffix, shape, order)                                                         \
  if constexpr (is_full(#suffix))                                                                                      \
    expect_levels(                                                                                                     \
        #name, [](auto level, auto&... all) { return kelvm::CPP_##family<decltype(level)::value>(all...); },           \
        ARGUMENTS_##shape(type));
#include "members.def"
#undef KELVM_MEMBER
  EXPECT_EQ(reached, functions);
}

TEST(Calls, FullAccuracyIsTheDefault) {
  calls.clear();
  std::vector<double> x(2);
  std::vector<float> y(2);
  kelvm::exp(x, x);
  kelvm::exp(y, y);
  ASSERT_EQ(calls.size(), 2U);
  EXPECT_EQ(calls[0].name, "kelsExp_64f_A53");
  EXPECT_EQ(calls[0].arrays, (std::vector<const void*>{x.data(), x.data()})) << "in place";
  EXPECT_EQ(calls[1].name, "kelsExp_32f_A24");
}

TEST(Calls, ContiguousRangesOfAllKinds) {
  const double constant[3] = {};
  std::array<double, 3> array;
  std::span<double, 3> fixed(array);
  std::vector<double> vector(3);
  calls.clear();
  kelvm::exp(constant, array);
  kelvm::exp(std::as_const(array), std::span(vector));
  kelvm::exp(std::vector<double>(3), vector);
  kelvm::exp(std::span<const double>(vector).first(3), fixed);
  const std::vector<const void*> sources = {constant, array.data(), nullptr, vector.data()},
                                 destinations = {array.data(), vector.data(), vector.data(), array.data()};
  ASSERT_EQ(calls.size(), sources.size());
  for (std::size_t i = 0; i < calls.size(); ++i) {
    EXPECT_TRUE(!sources[i] || calls[i].arrays[0] == sources[i]) << i;
    EXPECT_EQ(calls[i].arrays[1], destinations[i]) << i;
  }
}

TEST(Calls, ExponentsAreConverted) {
  std::vector<float> x(1);
  std::vector<std::complex<double>> z(1);
  calls.clear();
  kelvm::pow(x, 2, x);
  kelvm::pow(x, 0.1, x);
  kelvm::pow(z, 3, z);
  kelvm::pow(z, std::complex<double>(1, -2), z);
  kelvm::pow(z, std::complex<float>(0.5f, 4), z);
  const std::complex<double> expected[] = {2, 0.1f, 3, {1, -2}, {0.5, 4}};
  ASSERT_EQ(calls.size(), std::size(expected));
  for (std::size_t i = 0; i < calls.size(); ++i) EXPECT_EQ(calls[i].exponent, expected[i]) << i;
}

TEST(Calls, SizesThatDifferAreFoundBeforeAnythingIsCalled) {
  std::vector<double> two(2), three(3);
  calls.clear();
  EXPECT_THROW(kelvm::exp(two, three), std::invalid_argument);
  EXPECT_THROW(kelvm::add(two, three, two), std::invalid_argument);
  EXPECT_THROW(kelvm::add(two, two, three), std::invalid_argument);
  EXPECT_THROW(kelvm::sincos(two, two, three), std::invalid_argument);
  EXPECT_THROW(kelvm::pow(three, 2.0, two), std::invalid_argument);
  EXPECT_THROW(kelvm::exp(std::vector<double>(), two), std::invalid_argument);
  EXPECT_THROW(kelvm::exp(std::execution::par, two, three), std::invalid_argument);
  EXPECT_EQ(without_exceptions(two, three), kelvm::status::size_error);
  EXPECT_TRUE(calls.empty());
}

TEST(Calls, EmptyRangesAreNoError) {
  std::vector<double> empty;
  calls.clear();
  EXPECT_EQ(kelvm::log(empty, empty), kelvm::status::ok);
  EXPECT_EQ(kelvm::log(std::execution::par, empty, empty), kelvm::status::ok);
  EXPECT_TRUE(calls.empty());
}

// A range that no memory stands behind.
template <class T> std::span<T> imagined(std::size_t size, std::uintptr_t at) {
  return {reinterpret_cast<T*>(at), size};
}

TEST(Calls, LongRangesAreCutIntoCalls) {
  const std::size_t most = std::numeric_limits<int>::max();
  calls.clear();
  kelvm::exp(imagined<float>(most, 64), imagined<float>(most, 64));
  ASSERT_EQ(calls.size(), 1U);
  EXPECT_EQ(calls[0].length, std::numeric_limits<int>::max());

  for (const std::size_t size : {most + 1, 2 * most + 2, std::size_t{5'000'000'123}}) {
    const auto x = imagined<const std::complex<float>>(size, 1 << 20),
               y = imagined<const std::complex<float>>(size, 1 << 21);
    calls.clear();
    kelvm::pow(x, y, imagined<std::complex<float>>(size, 1 << 22));
    std::size_t next = 0;
    for (const Call& call : calls) {
      const auto at = [&](std::uintptr_t base) { return reinterpret_cast<const void*>(base + next * sizeof x[0]); };
      EXPECT_EQ(call.arrays, (std::vector{at(1 << 20), at(1 << 21), at(1 << 22)}));
      ASSERT_GT(call.length, 0);
      next += static_cast<std::size_t>(call.length);
    }
    EXPECT_EQ(next, size);

    calls.clear();
    kelvm::pow(x, std::complex<float>(1, 2), imagined<std::complex<float>>(size, 1 << 22));
    for (const Call& call : calls) EXPECT_EQ(call.exponent, std::complex<double>(1, 2));
  }
}

TEST(Calls, StatusOfTheLastExceptionalElement) {
  std::vector<double> x(1);
  for (const kelvm::status s : {kelvm::status::ok, kelvm::status::overflow, kelvm::status::underflow,
                                kelvm::status::pole, kelvm::status::domain, kelvm::status::null_pointer}) {
    calls.clear();
    statuses = {static_cast<kelStatus>(s)};
    EXPECT_EQ(kelvm::exp(x, x), s);
  }

  const auto long_one = imagined<double>(std::size_t{3} << 31, 64);
  const std::vector<std::vector<kelStatus>> found = {{0, 18, 0, 19, 0, 0}, {19, 0, 0, 0, 0, 18}, {12, 0, 17, 0, 0, 0}};
  const kelvm::status expected[] = {kelvm::status::domain, kelvm::status::pole, kelvm::status::underflow};
  for (std::size_t i = 0; i < found.size(); ++i) {
    calls.clear();
    statuses = found[i];
    EXPECT_EQ(kelvm::exp(long_one, long_one), expected[i]);
    EXPECT_EQ(calls.size(), found[i].size());
  }

  calls.clear();
  statuses = {kelStatusNullPtrError};
  EXPECT_EQ(kelvm::exp(imagined<double>(long_one.size(), 0), long_one), kelvm::status::null_pointer);
  EXPECT_EQ(calls.size(), 1U) << "an error ends the call";
  statuses.clear();
}

TEST(Status, EveryOneHasWordsOfItsOwn) {
  std::set<std::string> words;
  for (const int s : {0, -6, -8, 12, 17, 18, 19, 1}) words.insert(to_string(static_cast<kelvm::status>(s)));
  EXPECT_EQ(words.size(), 8U);
  EXPECT_EQ(words.count("pole: a result is infinite"), 1U);
}

} // namespace
