// Sine and cosine, double. A53 and A50 are one computation, the core of sine_cosine.hpp rounded once: 0.53 ulp for
// |x| < 90112, 0.54 (sine) and 0.61 (cosine) between there and 2^17, where the pi/32 reduction is still used.
//
// A26: the same angles with one double each and a remainder without tail, r = x - k pi/32 in three steps;
//   sin r = r (1 - r^2/6 + r^4/120), cos r = 1 - r^2/2 + r^4/24
// to 2^-40. Every rounding counts toward the absolute error, which stays below 3e-11, so that next to the zeros other
// than sin 0 relative accuracy is lost.
//
// Zeros keep their sign, and tiny elements are their own sines, by the formulas themselves.
#include "kelvm/trig.h"
#include "trig/circular.hpp"
#include "trig/sine_cosine.hpp"

namespace kelvm::inline KELVM_BUILD {
namespace {

struct A53 {
  using Element = double;
  static constexpr int vectors_in_flight = 2;
  static constexpr double last = 0x1.5ffffffffffffp+16; // below 90112

  template <class V> static V rounded(HeadTail<V> y) { return y.head + y.tail; }
  template <class V> static V sine(const Remainder<V>& r) { return rounded(kelvm::sine<0>(r, SmallAngle(r.head))); }
  template <class V> static V cosine(const Remainder<V>& r) { return rounded(kelvm::sine<1>(r, SmallAngle(r.head))); }
  template <class V> static Pair<V> sine_cosine(const Remainder<V>& r) {
    const SmallAngle<V> small(r.head);
    return {rounded(kelvm::sine<0>(r, small)), rounded(kelvm::sine<1>(r, small))};
  }
  template <class V> static V sine(V x) { return sine(reduce(x)); }
  template <class V> static V cosine(V x) { return cosine(reduce(x)); }
  template <class V> static Pair<V> sine_cosine(V x) { return sine_cosine(reduce(x)); }
};

struct A26 {
  using Element = double;
  static constexpr int vectors_in_flight = 4;
  static constexpr double last = 0x1.60000ffffffffp+16; // below 90112.0625

  template <class V> struct Parts {
    V cos_a, sin_a, cos_r, sin_r;
    explicit Parts(V x) {
      const V shifted = x * thirty_two_over_pi + 0x1.8p52;
      const V k = shifted - 0x1.8p52;
      const V r = ((x - k * 0x1.921fb54442d18p-4) - k * 0x1.1a62633145c06p-58) - k * 0x1.c1cd129024e09p-111;
      const Pair<V> a = lookup_pair<cosine_sine>(int_bits(shifted) & 63);
      cos_a = a.first;
      sin_a = a.second;
      const V z = r * r;
      sin_r = r * (1.0 + z * (-0x1.5555555555555p-3 + z * 0x1.1111111111111p-7));
      cos_r = 1.0 + z * (-0.5 + z * 0x1.5555555555555p-5);
    }
    V sine() const { return sin_a * cos_r + cos_a * sin_r; }
    V cosine() const { return cos_a * cos_r - sin_a * sin_r; }
  };
  template <class V> static V sine(V x) { return Parts<V>(x).sine(); }
  template <class V> static V cosine(V x) { return Parts<V>(x).cosine(); }
  template <class V> static Pair<V> sine_cosine(V x) {
    const Parts<V> parts(x);
    return {parts.sine(), parts.cosine()};
  }
};

} // namespace

double sine_of(double x) { return A53::sine(reduce_any(x)); }
double cosine_of(double x) { return A53::cosine(reduce_any(x)); }
Pair<double> sine_cosine_of(double x) { return A53::sine_cosine(reduce_any(x)); }

} // namespace kelvm::inline KELVM_BUILD

KELVM_UNARY(kelsSin_64f_A26, kelvm::Sin<kelvm::A26>)
KELVM_UNARY(kelsSin_64f_A50, kelvm::Sin<kelvm::A53>)
KELVM_UNARY(kelsSin_64f_A53, kelvm::Sin<kelvm::A53>)
KELVM_UNARY(kelsCos_64f_A26, kelvm::Cos<kelvm::A26>)
KELVM_UNARY(kelsCos_64f_A50, kelvm::Cos<kelvm::A53>)
KELVM_UNARY(kelsCos_64f_A53, kelvm::Cos<kelvm::A53>)
KELVM_TWO_OUTPUTS(kelsSinCos_64f_A26, kelvm::SinCos<kelvm::A26>)
KELVM_TWO_OUTPUTS(kelsSinCos_64f_A50, kelvm::SinCos<kelvm::A53>)
KELVM_TWO_OUTPUTS(kelsSinCos_64f_A53, kelvm::SinCos<kelvm::A53>)
KELVM_REAL_TO_COMPLEX(kelsCIS_64fc_A26, kelvm::CIS<kelvm::A26>)
KELVM_REAL_TO_COMPLEX(kelsCIS_64fc_A50, kelvm::CIS<kelvm::A53>)
KELVM_REAL_TO_COMPLEX(kelsCIS_64fc_A53, kelvm::CIS<kelvm::A53>)
