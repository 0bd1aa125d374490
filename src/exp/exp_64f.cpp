// Exponential, double: e^x = 2^m 2^(j/N) e^r with k = round(x N / ln 2), j = k mod N, m = floor(k / N) and
// r = x - k ln 2 / N, |r| <= ln 2 / (2N).
//
//          N     2^(j/N)          e^r - 1     error
//   A53    64    double-word      degree 5    0.5245 ulp
//   A50    128   rounded          degree 4    3.64 ulp (2^-50.8)
//   A26    128   rounded          degree 2    2^-28.2
//
// Constants and tables are prescribed values, and so is the order of operations: all builds promise these bits. No fit
// replaces them.
//
// Tang, "Table-driven implementation of the exponential function in IEEE floating-point arithmetic", 1989.
//
// x N / ln 2 is rounded by adding 1.5 * 2^52, which leaves k in the low bits of the sum; 2^m is made by moving those
// bits into the exponent field, valid for results in the normal range. Elements with |x| >= 708.396 leave the vector
// formula. Products with a tiny remainder, and in A50 and A26 those with a scale near the smallest normal number, may
// raise an underflow that no result earns.
#include "exact/polynomial.hpp"
#include "exp/exp_tables.hpp"
#include "frame/edges.hpp"
#include "frame/export.hpp"
#include "kelvm/exp.h"
#include "simd/table.hpp"

namespace kelvm::inline KELVM_BUILD::exp_64f {
namespace {

constexpr double from_pattern(std::uint64_t bits) { return __builtin_bit_cast(double, bits); }

// Every accuracy below has its table size N = 2^log_n, its constants, and, for r and j of the reduction:
//   remainder(x, k)       r
//   unscaled(r, j)        2^(j/N) e^r
//   scaled(r, j, scale)   the same times scale, a power of two, in the order of operations of ordinary elements
//   nan(x)                the result for a NaN
//   nan_result(x)         the same for quiet ones

struct A53 {
  static constexpr int log_n = 6;
  static constexpr double largest_ordinary = 708;
  static constexpr double n_over_ln2 = from_pattern(0x40571547652B82FE);
  static constexpr double last_subnormal = from_pattern(0xC086232BDD7ABCD3);     // -708.396...
  static constexpr double first_scaled_twice = from_pattern(0x40862E37E7D8BA72); // 709.777...

  template <class V> static V remainder(V x, V k) {
    return x - k * from_pattern(0x3F862E42FEF00000) - k * from_pattern(0x3D7473DE6AF278ED);
  }
  template <class V> static V unscaled(V r, Int<V> j) {
    // e^r - 1 - r = r^2 (...), absolute error below 2^-70
    constexpr double c[] = {from_pattern(0x3FDFFFFFFFFFD97C), from_pattern(0x3FC55555555542A1),
                            from_pattern(0x3FA555574BC3A1BE), from_pattern(0x3F81111276409C2C)};
    const V p = horner_unfused(r, c) * (r * r) + r;
    const auto [head, tail] = lookup_pair<exp2_head_tail_64>(j);
    return (p * (head + tail) + tail) + head;
  }
  template <class V> static V scaled(V r, Int<V> j, V scale) { return unscaled(r, j) * scale; }
  static double nan(double) { return from_pattern(0xFFFFFFFFFFFFFFFF); }
  template <class V> static V nan_result(V) { return from_bits<V>(splat<Bits<V>>(0xFFFFFFFFFFFFFFFF)); }
};

/// A50 and A26: 2^(j/N) as a fraction field that is or-ed into the scale.
template <class P> struct OrredTable {
  static constexpr int log_n = 7;
  static constexpr double largest_ordinary = 665; // below its negative are products of small scales and remainders
  static constexpr double n_over_ln2 = from_pattern(0x40671547652B82FE);

  template <class V> static V scaled(V r, Int<V> j, V scale) {
    const V s = bit_cast<V>(int_bits(scale) | lookup<exp2_fraction_128>(j));
    return s * P::exp_minus_1(r) + s;
  }
  template <class V> static V unscaled(V r, Int<V> j) { return scaled(r, j, splat<V>(1.0)); }
  static double nan(double x) { return x + x; }
  template <class V> static V nan_result(V nan) { return nan; }
};

struct A50 : OrredTable<A50> {
  static constexpr double last_subnormal = from_pattern(0xC086232BDD7ABCD1);
  static constexpr double first_scaled_twice = from_pattern(0x40862E3D73697A31); // 709.780...
  template <class V> static V remainder(V x, V k) {
    return x - k * from_pattern(0x3F762E42FEE00000) - k * from_pattern(0x3D7A39EF35793C76);
  }
  template <class V> static V exp_minus_1(V r) {
    constexpr double c[] = {from_pattern(0x3FDFFFFFFFFFFEB0), from_pattern(0x3FC55555B7BAE976),
                            from_pattern(0x3FA55555C2A9C0FA)};
    return r + (r * r) * horner_unfused(r, c);
  }
};

struct A26 : OrredTable<A26> {
  static constexpr double last_subnormal = from_pattern(0xC086232BDD7ABCD3);
  // The bound of N = 64: from here to 709.780 the scaling overflows, and +inf without a code is the result.
  static constexpr double first_scaled_twice = from_pattern(0x40862E37E7D8BA72);
  template <class V> static V remainder(V x, V k) { return x - k * from_pattern(0x3F762E42FEFA39EF); }
  template <class V> static V exp_minus_1(V r) { return 0.5 * r * r + r; }
};

template <class P> struct Exp64 : KernelDefaults, ExponentialOfInfinities<0> {
  using Element = double;
  static constexpr bool spurious_underflow = true;

  template <class V> struct Reduced {
    V r;
    Int<V> j;
    V t; // k + 1.5 * 2^52

    explicit Reduced(V x) {
      t = x * P::n_over_ln2 + rounding_constant<double>;
      r = P::remainder(x, t - rounding_constant<double>);
      j = int_bits(t) & ((1 << P::log_n) - 1);
    }
    /// 2^(m + extra), where that is a normal number.
    V power(int extra = 0) const {
      constexpr std::int64_t exponent_mask = 0x7FF0000000000000;
      const Int<V> biased = int_bits(t) + (std::int64_t(1023 + extra) << P::log_n);
      return bit_cast<V>((biased << (52 - P::log_n)) & exponent_mask);
    }
  };

  static constexpr Magnitudes ordinary{0x1p-60, P::largest_ordinary};
  /// Above zero nothing is.
  template <class V> static SignMask<V> noisy(V x) {
    return outside_but_zero(abs(x), ordinary.from, largest_finite<double>) |
           (int_bits(x) & bit_cast<SignMask<V>>(beyond(abs(x), ordinary.to)));
  }
  template <class V> static SignMask<V> special(V x) {
    return above(abs(x), from_pattern(0x4086232AFFFFFFFF)); // |x| >= 708.396, NaN
  }
  template <class V> static V formula(V x) {
    const Reduced<V> z(x);
    return P::scaled(z.r, z.j, z.power());
  }

  template <class V> static V nan_result(V nan) { return P::nan_result(nan); }
  static double element(double x, kelStatus& status) {
    if (is_nan(x)) return P::nan(x);
    if (x == infinity<double>) return x;
    if (x == -infinity<double>) return 0.0;
    if (x <= from_pattern(0xC0874910D52D3052)) { // -745.133...
      status = kelStatusUnderflow;               // a stored zero: no flag
      return 0.0;
    }
    if (x >= from_pattern(0x40862E42FEFA39F0)) { // 709.782...
      status = kelStatusOverflow;                // a stored infinity: no flag
      return infinity<double>;
    }
    const Reduced<double> z(x);
    if (x <= P::last_subnormal) {
      status = kelStatusUnderflow;
      return P::unscaled(z.r, z.j) * z.power(1022) * 0x1p-1022; // rounded once, by the last product
    }
    if (x >= P::first_scaled_twice) return P::unscaled(z.r, z.j) * 0x1p1023 * 2.0;
    return formula(x);
  }
};

} // namespace

KELVM_UNARY(kelsExp_64f_A26, Exp64<A26>)
KELVM_UNARY(kelsExp_64f_A50, Exp64<A50>)
KELVM_UNARY(kelsExp_64f_A53, Exp64<A53>)

} // namespace kelvm::inline KELVM_BUILD::exp_64f
