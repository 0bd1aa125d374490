// The real exponentials against a second transcription (exp_reference.hpp): every row at its thresholds, with codes and
// flags, and the bits of many ordinary values.
#include "exp_reference.hpp"
#include "special.hpp"

#include <random>

namespace {

using namespace exp_reference;

std::uint64_t pattern(double x) { return bit_cast<u64>(x); }
std::uint64_t pattern(float x) { return bit_cast<u32>(x); }

/// The numbers with a representable one to either side, in both signs.
template <class T> std::vector<T> with_neighbours(std::initializer_list<T> numbers) {
  std::vector<T> all;
  for (T x : numbers)
    for (T y : {std::nextafter(x, T(0)), x, std::nextafter(x, std::numeric_limits<T>::infinity())})
      all.insert(all.end(), {y, -y});
  return all;
}

template <class T>
void check(const char* name, Result<T> (*expected)(T), const std::vector<T>& edges, T lowest, T highest) {
  std::vector<special::Row> rows;
  for (T x : edges) {
    const Result<T> y = expected(x);
    rows.push_back({{special::bits(pattern(x))}, {special::bits(pattern(y.value))}, y.status, unsigned(y.flags)});
  }
  special::check(name, rows);

  std::mt19937_64 random(1);
  std::uniform_real_distribution<T> anywhere(lowest, highest);
  std::vector<T> x(200000), y(x.size());
  for (std::size_t i = 0; i < x.size(); ++i)
    x[i] = anywhere(random) * (i % 4 == 0 ? T(std::ldexp(1.0, -int(random() % (sizeof(T) * 14)))) : T(1));
  const auto function = *harness::find_function(name);
  driver::library().call(function, {.src1 = x.data(), .dst1 = y.data(), .len = int(x.size())});
  int wrong = 0;
  for (std::size_t i = 0; i < x.size() && wrong < 5; ++i) {
    const T e = expected(x[i]).value;
    if (pattern(y[i]) != pattern(e)) {
      ++wrong;
      ADD_FAILURE() << name << " of " << std::hexfloat << x[i] << " is " << y[i] << ", not " << e;
    }
  }
}

TEST(Exp, DoublesAsTranscribed) {
  std::vector<double> edges =
      with_neighbours({d(0x4086232B00000000), d(0x40874910D52D3052), d(0x4086232BDD7ABCD3), d(0x4086232BDD7ABCD1),
                       d(0x40862E42FEFA39F0), d(0x40862E37E7D8BA72), d(0x40862E3D73697A31), d(0x40862E42FEFA39EF),
                       709.779, 708.5, 746.0, 1.0, 0x1p-54, 0x1p-538, 0x1p-1022, 0x1p-1074, 0x1.fffffffffffffp1023});
  for (u64 bits : {0x0ull, 0x8000000000000000ull, 0x7FF0000000000000ull, 0xFFF0000000000000ull, 0x7FF8000000000123ull,
                   0xFFF8000000000000ull, 0x7FF0000000000001ull, 0xFFF4000000000000ull})
    edges.push_back(d(bits));
  check<double>("kelsExp_64f_A26", exp64<Accuracy64::A26>, edges, -750, 712);
  check<double>("kelsExp_64f_A50", exp64<Accuracy64::A50>, edges, -750, 712);
  check<double>("kelsExp_64f_A53", exp64<Accuracy64::A53>, edges, -750, 712);
}

TEST(Exp, FloatsAsTranscribed) {
  std::vector<float> edges = with_neighbours({f(0x42AE8000), f(0x42AEAC50), f(0x42B17218), f(0x42CE8ED1), f(0x43200000),
                                              90.0f, 1.0f, 0x1p-25f, 0x1p-64f, 0x1p-126f, 0x1p-149f, 0x1.fffffep127f});
  for (u32 bits : {0x0u, 0x80000000u, 0x7F800000u, 0xFF800000u, 0x7FC00123u, 0xFFC00000u, 0x7F800001u, 0xFFA00000u})
    edges.push_back(f(bits));
  check<float>("kelsExp_32f_A11", exp32_a11, edges, -170, 165);
  check<float>("kelsExp_32f_A21", exp32<false>, edges, -110, 90);
  check<float>("kelsExp_32f_A24", exp32<true>, edges, -110, 90);
}

} // namespace
