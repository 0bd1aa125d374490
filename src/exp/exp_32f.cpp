// Exponential, float. A24 and A21: e^x = 2^m 2^(j/128) e^r in single precision, as in double (exp_64f.cpp). A11: N = 1,
// no table.
//
//          2^(j/N)                        e^r         error
//   A24    head and relative correction   degree 2    0.574 ulp
//   A21    rounded                        degree 2    2^-22.4
//   A11    -                              degree 3    2^-12.4
//
// Constants and tables are prescribed values, as in double.
//
// Subnormal results are computed in double and rounded once. Products with a tiny remainder may raise an underflow
// that no result earns.
#include "exact/polynomial.hpp"
#include "exp/exp_tables.hpp"
#include "frame/edges.hpp"
#include "frame/export.hpp"
#include "kelvm/exp.h"
#include "simd/exponent.hpp"
#include "simd/table.hpp"

namespace kelvm::inline KELVM_BUILD::exp_32f {
namespace {

constexpr float from_pattern(std::uint32_t bits) { return __builtin_bit_cast(float, bits); }
constexpr double from_pattern_64(std::uint64_t bits) { return __builtin_bit_cast(double, bits); }

constexpr float first_overflow = from_pattern(0x42B17218); // 88.7228...
constexpr float last_subnormal = from_pattern(0xC2AEAC50); // -87.3365...

/// e^x in double, relative error 2^-31, for finite results: 2^k 2^f with k = round(x log2 e), |f| <= 1/2.
double exp_in_double(float x) {
  const double v = double(x) * from_pattern_64(0x3FF71547652B82FE);
  const double t = v + rounding_constant<double>;
  const double f = (rounding_constant<double> - t) + v;
  const double power = power_of_two<double>(bits(t));
  constexpr double odd[] = {0.69314720573726651, 0.05550328776967639, 0.0013399931218481776};
  constexpr double even[] = {0.24022646890634758, 0.0096184889570477237, 0.00015345812020122585};
  const double f2 = f * f;
  return power * ((1.0000000005541663 + f * horner_unfused(f2, odd)) + f2 * horner_unfused(f2, even));
}

/// A24 and A21: reduction, classification and special rows. P has scaled(r, j, scale) and, for results in the highest
/// binade, whose scale 2^128 does not exist, scaled_by_128(r, j).
template <class P> struct Exp32 : KernelDefaults, ExponentialOfInfinities<0> {
  using Element = float;
  static constexpr bool spurious_underflow = true;

  template <class V> struct Reduced {
    V r;
    Int<V> j, scale; // the scale as bits of 2^m; of infinity where m = 128

    explicit Reduced(V x) {
      const V t = x * from_pattern(0x4338AA3B) + 11534336.0f; // k + 1.375 * 2^23
      const V k = t - 11534336.0f;
      r = x - k * from_pattern(0x3BB18000) - k * from_pattern(0xB5DE8083);
      j = int_bits(t) & 127;
      scale = ((int_bits(t) >> 7) + 0x7F) << 23;
    }
  };

  static constexpr Magnitudes ordinary{0x1p-28, 87.33};
  template <class V> static SignMask<V> special(V x) {
    return above(abs(x), from_pattern(0x42AEAC4F));
  } // |x| >= 87.3365
  template <class V> static V formula(V x) {
    const Reduced<V> z(x);
    return P::scaled(z.r, z.j, bit_cast<V>(z.scale));
  }

  static float element(float x, kelStatus& status) {
    if (is_nan(x)) return x + x;
    if (x == infinity<float>) return x;
    if (x == -infinity<float>) return 0.0f;
    if (abs(x) < -last_subnormal) return formula(x);
    if (x >= first_overflow) return overflow(status, x);
    if (x > 0) {
      const Reduced<float> z(x);
      return z.scale > 0x7F000000 ? P::scaled_by_128(z.r, z.j) : formula(x);
    }
    if (x <= from_pattern(0xC2CE8ED1)) return underflow(status, 0.0f); // -103.278...
    status = kelStatusUnderflow;
    return float(exp_in_double(x)); // raises underflow
  }
};

struct A24 {
  template <class V> static V scaled(V r, Int<V> j, V scale) {
    const auto [head, correction] = lookup_pair<exp2_head_correction_128>(j);
    return scale * (head * (0.5f * (r * r) + (correction + r)) + head);
  }
  static float scaled_by_128(float r, int j) { return scaled(r, j, 1.0f) * 0x1p127f * 2.0f; }
};

struct A21 {
  template <class V> static V exp_of_remainder(V r) { return (0.5f * r + 1.0f) * r + 1.0f; }
  template <class V> static V scaled(V r, Int<V> j, V scale) {
    return exp_of_remainder(r) * bit_cast<V>(int_bits(scale) | lookup<exp2_fraction_128_float>(j));
  }
  static float scaled_by_128(float r, int j) {
    return exp_of_remainder(r) * 0x1p127f * from_pattern(0x40000000u | exp2_fraction_128_float[j]);
  }
};

struct A11 : KernelDefaults, ExponentialOfInfinities<0> {
  using Element = float;
  static constexpr bool spurious_underflow = true;

  template <class V> static SignMask<V> special(V x) { return above(abs(x), from_pattern(0x42AE7FFF)); } // |x| >= 87.25
  template <class V> static V formula(V x) {
    const V t = x * from_pattern(0x3FB8AA3B) + rounding_constant<float>;
    const V power = power_of_two<V>(bits(t));
    const V r = x - (t - rounding_constant<float>)*from_pattern(0x3F317218);
    // e^r, relative error 2^-12.4 on |r| <= ln 2 / 2
    constexpr float c[] = {1.0f, from_pattern(0x3F80017A), from_pattern(0x3F00F657), from_pattern(0x3E2AAA8D)};
    return power * horner_unfused(r, c);
  }

  /// The rows overlap: a code stands also where the result is an ordinary number or a stored zero or infinity, which
  /// raise nothing. A NaN comes back as it is.
  static float element(float x, kelStatus& status) {
    if (is_nan(x)) return x;
    if (x >= first_overflow && x < infinity<float>) status = kelStatusOverflow;
    if (x <= last_subnormal && x > -infinity<float>) status = kelStatusUnderflow;
    if (x >= 160.0f) return infinity<float>;
    if (x < -160.0f) return 0.0f;
    return abs(x) < 87.25f ? formula(x) : wide(x);
  }

private:
  /// Through double, over the whole range: e^r by a polynomial of degree 6, |r| <= ln 2 / 2.
  static float wide(float x) {
    const double xd = x;
    const double t = xd * from_pattern_64(0x3FF71547652B82FE) + rounding_constant<double>;
    const double r = xd - (t - rounding_constant<double>)*from_pattern_64(0x3FE62E42FEFA39EF);
    const double power = power_of_two<double>(bits(t));
    constexpr double c[] = {1.0000000005585943,   1.0000000365391162,    0.49999992032320767,  0.16666419190347548,
                            0.041668231801027439, 0.0083748983630576226, 0.0013836742051737468};
    return float(power * horner_unfused(r, c));
  }
};

} // namespace

KELVM_UNARY(kelsExp_32f_A11, A11)
KELVM_UNARY(kelsExp_32f_A21, Exp32<A21>)
KELVM_UNARY(kelsExp_32f_A24, Exp32<A24>)

} // namespace kelvm::inline KELVM_BUILD::exp_32f
