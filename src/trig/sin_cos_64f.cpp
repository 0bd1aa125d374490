// Sine and cosine, double. A53 and A50 are one computation, the core of sine_cosine.hpp rounded once: 0.53 ulp for
// |x| < 90112, 0.54 (sine) and 0.61 (cosine) between there and 2^17, where the pi/32 reduction is still used.
//
// A26: the same angles with one double each and a remainder without tail, r = x - k pi/32 in three steps;
//   sin r = r (1 - r^2/6 + r^4/120), cos r = 1 - r^2/2 + r^4/24
// to 2^-40. Every rounding counts toward the absolute error, which stays below 3e-11, so that next to the zeros other
// than sin 0 relative accuracy is lost.
//
// Constants and tables are prescribed values, and so is the order of operations: all builds promise these bits. No fit
// replaces them.
//
// Zeros keep their sign, and tiny elements are their own sines, by the formulas themselves.
#include "kelvm/trig.h"
#include "trig/circular.hpp"
#include "trig/sine_cosine.hpp"

namespace kelvm::inline KELVM_BUILD::sin_cos_64f {
namespace {

struct A53 {
  using Element = double;
  static constexpr int vectors_in_flight = few_vectors_in_flight;
  template <class V> using WideResultTest = NoResultTest;
  static constexpr double last = 0x1.5ffffffffffffp+16; // below 90112

  template <class V> static V sine(const Remainder<V>& r) { return rounded(kelvm::sine<0>(r, SmallAngle(r.hi))); }
  template <class V> static V cosine(const Remainder<V>& r) { return rounded(kelvm::sine<1>(r, SmallAngle(r.hi))); }
  template <class V> static Pair<V> sine_cosine(const Remainder<V>& r) {
    const SmallAngle<V> small(r.hi);
    return {rounded(kelvm::sine<0>(r, small)), rounded(kelvm::sine<1>(r, small))};
  }
  template <class V> static Remainder<V> reduce(V x) { return kelvm::reduce(x); }
  template <class V> static Remainder<V> reduce_any(V x) { return kelvm::reduce_any(x); }
};

struct A26 {
  using Element = double;
  static constexpr int vectors_in_flight = 4;
  template <class V> using WideResultTest = NoResultTest;
  static constexpr double last = 0x1.60000ffffffffp+16; // below 90112.0625

  template <class V> struct Parts { V cos_a, sin_a, cos_r, sin_r; };
  template <class V> static Parts<V> parts(V r, Int<V> index) {
    const auto [cos_a, sin_a] = lookup_pair<cosine_sine>(index & 63);
    const V z = r * r;
    return {cos_a, sin_a, 1.0 + z * (-0.5 + z * 0x1.5555555555555p-5),
            r * (1.0 + z * (-0x1.5555555555555p-3 + z * 0x1.1111111111111p-7))};
  }
  template <class V> static V remainder(V x, V k) {
    return ((x - k * 0x1.921fb54442d18p-4) - k * 0x1.1a62633145c06p-58) - k * 0x1.c1cd129024e09p-111;
  }
  template <class V> static Parts<V> reduce(V x) {
    const V shifted = x * thirty_two_over_pi + rounding_constant<double>;
    return parts(remainder(x, shifted - rounding_constant<double>), int_bits(shifted));
  }
  template <class V> static Parts<V> reduce_any(V x) {
    const WithinReach<V> within(x);
    const V shifted = within.y * thirty_two_over_pi + rounding_constant<double>;
    return parts(remainder(within.y, shifted - rounding_constant<double>), int_bits(shifted) + within.index);
  }

  template <class V> static V sine(const Parts<V>& p) { return p.sin_a * p.cos_r + p.cos_a * p.sin_r; }
  template <class V> static V cosine(const Parts<V>& p) { return p.cos_a * p.cos_r - p.sin_a * p.sin_r; }
  template <class V> static Pair<V> sine_cosine(const Parts<V>& p) { return {sine(p), cosine(p)}; }
};

} // namespace

KELVM_UNARY(kelsSin_64f_A26, Sin<A26>)
KELVM_UNARY(kelsSin_64f_A50, Sin<A53>)
KELVM_UNARY(kelsSin_64f_A53, Sin<A53>)
KELVM_UNARY(kelsCos_64f_A26, Cos<A26>)
KELVM_UNARY(kelsCos_64f_A50, Cos<A53>)
KELVM_UNARY(kelsCos_64f_A53, Cos<A53>)
KELVM_TWO_OUTPUTS(kelsSinCos_64f_A26, SinCos<A26>)
KELVM_TWO_OUTPUTS(kelsSinCos_64f_A50, SinCos<A53>)
KELVM_TWO_OUTPUTS(kelsSinCos_64f_A53, SinCos<A53>)
KELVM_UNARY(kelsCIS_64fc_A26, CIS<A26>)
KELVM_UNARY(kelsCIS_64fc_A50, CIS<A53>)
KELVM_UNARY(kelsCIS_64fc_A53, CIS<A53>)

} // namespace kelvm::inline KELVM_BUILD::sin_cos_64f

double kelvm::sine_of(double x) { return sin_cos_64f::A53::sine(reduce_any(x)); }
double kelvm::cosine_of(double x) { return sin_cos_64f::A53::cosine(reduce_any(x)); }
kelvm::Pair<double> kelvm::sine_cosine_of(double x) { return sin_cos_64f::A53::sine_cosine(reduce_any(x)); }
