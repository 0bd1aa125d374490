// Powers of doubles: x^y = e^(y ln x), with the cores of exp/log_core.hpp and exp/exp_core.hpp.
//
//          ln x                           y ln x              e^                     error
//   A53    head and tail, 2^-69           head and tail       128 steps, two parts   0.52 ulp
//   A50    head and tail, 2^-62           head and tail       32 steps               2^-50
//   A26    one double, 2^-43              one double          32 steps               2^-26
//
// y ln x may reach 745: the logarithm needs ten bits more than the result. The heads of y and ln x have 26 bits, so
// that their product is exact, and so is its reduction in the exponential.
//
// The vector formula covers positive normal x, |y| < 2^100 and results in the normal range; the rest goes element by
// element. Powx is the same with one y; an integer y lets negative x into the vector formula, which differs in the
// sign.
#include "exp/exp_core.hpp"
#include "exp/log_core.hpp"
#include "exp/pow_special.hpp"
#include "frame/member.hpp"
#include "kelvm/exp.h"

namespace kelvm::inline KELVM_BUILD {
namespace {

/// y (head + tail) with an exact head, |tail| < 2^-24 |head|, so that it stays small against a step of the exponential.
template <class V> HeadTail<V> times(V y, HeadTail<V> unnormalised) {
  const HeadTail<V> logarithm = fast_two_sum(unnormalised.head, unnormalised.tail);
  const V y_head = head_of(y), log_head = head_of(logarithm.head);
  const V log_rest = (logarithm.head - log_head) + logarithm.tail;
  return {y_head * log_head, y * log_rest + (y - y_head) * log_head};
}

struct PowA53 {
  using Rows = ExactRows;
  static constexpr ExpAccuracy exponential = ExpAccuracy::pow;
  template <class V> static HeadTail<V> exponent(const LogReduced<V>& x, V y) { return times(y, ln_pow(x)); }
};
struct PowA50 {
  using Rows = ExactRows;
  static constexpr ExpAccuracy exponential = ExpAccuracy::a50;
  template <class V> static HeadTail<V> exponent(const LogReduced<V>& x, V y) { return times(y, ln_a53(x)); }
};
struct PowA26 {
  using Rows = ShortRows;
  static constexpr ExpAccuracy exponential = ExpAccuracy::a26;
  template <class V> static HeadTail<V> exponent(const LogReduced<V>& x, V y) {
    return {y * logarithm<Natural, LogAccuracy::a24>(x), V{}};
  }
};

template <class P> struct Power : KernelDefaults {
  using Element = double;
  static constexpr bool doubts = true;
  static constexpr bool stray_underflow = true; // y ln x of a tiny y
  static constexpr double largest_y = 0x1p100;
  static constexpr double largest_exponent = 708; // results are normal up to there

  template <class V> static V positive(V x, V y, LaneBits& doubtful) {
    const HeadTail<V> exponent = P::exponent(log_reduce<typename P::Rows>(x), y);
    doubtful |= lane_bits(above(abs(exponent.head), largest_exponent));
    return exp_normal<P::exponential>(exponent.head, exponent.tail);
  }
  static double any(double x, double y, kelStatus& status) {
    return power(x, y, status, [](double x, double y) {
      const LogReduced<double> reduced = log_reduce_any<typename P::Rows>(x);
      // Beyond, the power is out of range for every x.
      if (y > largest_y) y = largest_y;
      if (y < -largest_y) y = -largest_y;
      const HeadTail<double> exponent = P::exponent(reduced, y);
      return exp_any<P::exponential>(exponent.head, exponent.tail);
    });
  }
};

template <class P> struct Pow64f : Power<P> {
  template <class V> static Marks<V> special(V x, V y) {
    return not_normal_positive(x) | above(abs(y), Power<P>::largest_y);
  }
  template <class V> static V formula(V x, V y, LaneBits& doubtful) { return Power<P>::positive(x, y, doubtful); }
  static double element(double x, double y, kelStatus& status) { return Power<P>::any(x, y, status); }
};

template <class P> struct Powx64f : Power<P> {
  Exponent<double> y;

  explicit Powx64f(double exponent) : y(exponent, Power<P>::largest_y) {}
  template <class V> Marks<V> special(V x) const { return y.ordinary ? not_normal_positive(y.base(x)) : ~Marks<V>{}; }
  template <class V> V formula(V x, LaneBits& doubtful) const {
    return y.result(Power<P>::positive(y.base(x), splat<V>(y.value), doubtful), x);
  }
  double element(double x, kelStatus& status) const { return Power<P>::any(x, y.value, status); }
};

} // namespace
} // namespace kelvm::inline KELVM_BUILD

KELVM_BINARY(kelsPow_64f_A26, kelvm::Pow64f<kelvm::PowA26>)
KELVM_BINARY(kelsPow_64f_A50, kelvm::Pow64f<kelvm::PowA50>)
KELVM_BINARY(kelsPow_64f_A53, kelvm::Pow64f<kelvm::PowA53>)
KELVM_SCALAR_POWER(kelsPowx_64f_A26, kelvm::Powx64f<kelvm::PowA26>)
KELVM_SCALAR_POWER(kelsPowx_64f_A50, kelvm::Powx64f<kelvm::PowA50>)
KELVM_SCALAR_POWER(kelsPowx_64f_A53, kelvm::Powx64f<kelvm::PowA53>)
