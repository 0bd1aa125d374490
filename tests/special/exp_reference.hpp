// The six real exponentials written out a second time, element by element, with integer arithmetic on the bit patterns
// and none of the library's vectors, reductions or classifications: what kelsExp must give bit for bit.
#pragma once

#include "exp/exp_tables.hpp"
#include "kelvm/types.h"

#include <bit>
#include <cfenv>
#include <cmath>
#include <cstdint>

namespace exp_reference {

using std::bit_cast;
using u32 = std::uint32_t;
using u64 = std::uint64_t;
using std::int32_t;
using std::int64_t;

/// Result, code, and the flags that the element raises (inexact aside), as in fenv.h and MXCSR.
template <class T> struct Result {
  T value;
  kelStatus status = kelStatusOk;
  int flags = 0;
};

inline double d(u64 bits) { return bit_cast<double>(bits); }
inline float f(u32 bits) { return bit_cast<float>(bits); }

/// A NaN quieted by arithmetic.
inline Result<double> quieted(double x) {
  const u64 bits = bit_cast<u64>(x), quiet = 0x8000000000000;
  return {d(bits | quiet), kelStatusOk, bits & quiet ? 0 : FE_INVALID};
}
inline Result<float> quieted(float x) {
  const u32 bits = bit_cast<u32>(x), quiet = 0x400000;
  return {f(bits | quiet), kelStatusOk, bits & quiet ? 0 : FE_INVALID};
}

enum class Accuracy64 { A26, A50, A53 };

/// The row of a double that is beyond the vector formula's range, or the ordinary result.
template <Accuracy64 A> Result<double> exp64(double x) {
  constexpr int n = A == Accuracy64::A53 ? 64 : 128;
  const u64 bits = bit_cast<u64>(x);
  const bool negative = bits >> 63;
  const u64 magnitude = bits & 0x7FFFFFFFFFFFFFFF;
  if (magnitude > 0x7FF0000000000000) return A == Accuracy64::A53 ? Result<double>{d(0xFFFFFFFFFFFFFFFF)} : quieted(x);
  if (magnitude == 0x7FF0000000000000) return {negative ? 0.0 : x};
  if (negative && bits >= 0xC0874910D52D3052) return {0.0, kelStatusUnderflow};
  if (!negative && bits >= 0x40862E42FEFA39F0) return {HUGE_VAL, kelStatusOverflow};

  const double shifter = d(0x4338000000000000);
  const double t = x * d(n == 64 ? 0x40571547652B82FE : 0x40671547652B82FE) + shifter;
  const double kf = t - shifter;
  const int64_t k = int64_t(kf);
  const int64_t j = ((k % n) + n) % n, m = (k - j) / n;
  double u, r;
  if constexpr (A == Accuracy64::A53) {
    r = x - kf * d(0x3F862E42FEF00000);
    r = r - kf * d(0x3D7473DE6AF278ED);
    double p = d(0x3F81111276409C2C) * r + d(0x3FA555574BC3A1BE);
    p = p * r + d(0x3FC55555555542A1);
    p = p * r + d(0x3FDFFFFFFFFFD97C);
    p = p * (r * r) + r;
    const double head = kelvm::exp2_head_tail_64[j][0], tail = kelvm::exp2_head_tail_64[j][1];
    u = p * (head + tail) + tail + head;
  } else {
    double p;
    if constexpr (A == Accuracy64::A50) {
      r = x - kf * d(0x3F762E42FEE00000);
      r = r - kf * d(0x3D7A39EF35793C76);
      p = r + r * r * (d(0x3FDFFFFFFFFFFEB0) + r * (d(0x3FC55555B7BAE976) + r * d(0x3FA55555C2A9C0FA)));
    } else {
      r = x - kf * d(0x3F762E42FEFA39EF);
      p = 0.5 * r * r + r;
    }
    const u64 fraction = u64(kelvm::exp2_fraction_128[j]);
    const double one = d(0x3FF0000000000000 | fraction);
    u = one * p + one;
    const u64 last_subnormal = A == Accuracy64::A50 ? 0xC086232BDD7ABCD1 : 0xC086232BDD7ABCD3;
    const u64 first_twice = A == Accuracy64::A50 ? 0x40862E3D73697A31 : 0x40862E37E7D8BA72;
    if ((negative || bits < first_twice) && (!negative || bits < last_subnormal)) {
      const double s = d((u64(m + 1023) << 52) | fraction);
      return {s * p + s};
    }
  }
  const u64 last_subnormal = A == Accuracy64::A50 ? 0xC086232BDD7ABCD1 : 0xC086232BDD7ABCD3;
  const u64 first_twice = A == Accuracy64::A50 ? 0x40862E3D73697A31 : 0x40862E37E7D8BA72;
  if (negative && bits >= last_subnormal) {
    const double normal = u * d(u64(m + 1022 + 1023) << 52), y = normal * 2.2250738585072014e-308;
    return {y, kelStatusUnderflow, y * 0x1p1022 == normal ? 0 : FE_UNDERFLOW}; // an exact product raises nothing
  }
  if (!negative && bits >= first_twice) {
    const double y = u * 8.98846567431158e+307 * 2;
    return {y, kelStatusOk, std::isinf(y) ? FE_OVERFLOW : 0};
  }
  return {u * d(u64(m + 1023) << 52)};
}

/// A21 and A24.
template <bool A24> Result<float> exp32(float x) {
  const u32 bits = bit_cast<u32>(x), magnitude = bits & 0x7FFFFFFF;
  const bool negative = bits >> 31;
  if (magnitude > 0x7F800000) return quieted(x);
  if (magnitude == 0x7F800000) return {negative ? 0.0f : x};
  if (!negative && bits >= 0x42B17218) return {HUGE_VALF, kelStatusOverflow, FE_OVERFLOW};
  if (negative && bits >= 0xC2CE8ED1) return {0.0f, kelStatusUnderflow, FE_UNDERFLOW};
  if (negative && bits >= 0xC2AEAC50) {
    const double v = double(x) * d(0x3FF71547652B82FE), shifter = d(0x4338000000000000);
    const double t = v + shifter, g = (shifter - t) + v, g2 = g * g;
    const double odd =
        1.0000000005541663 + g * (0.69314720573726651 + g2 * (0.05550328776967639 + g2 * 0.0013399931218481776));
    const double even = g2 * (0.24022646890634758 + g2 * (0.0096184889570477237 + g2 * 0.00015345812020122585));
    return {float(std::ldexp(odd + even, int(t - shifter))), kelStatusUnderflow, FE_UNDERFLOW};
  }
  const float t = x * f(0x4338AA3B) + 11534336.0f, kf = t - 11534336.0f;
  float r = x - kf * f(0x3BB18000);
  r = r - kf * f(0xB5DE8083);
  const int k = int(kf), j = ((k % 128) + 128) % 128, m = (k - j) / 128;
  const float scale = m == 128 ? 0.0f : f(u32(m + 127) << 23);
  if (A24) {
    const float head = kelvm::exp2_head_correction_128[j][0], correction = kelvm::exp2_head_correction_128[j][1];
    const float u = head * (0.5f * (r * r) + (correction + r)) + head;
    return {m == 128 ? u * 0x1p127f * 2.0f : scale * u};
  }
  const u32 fraction = u32(kelvm::exp2_fraction_128_float[j]);
  const float p = (0.5f * r + 1.0f) * r + 1.0f;
  if (m == 128) return {p * 0x1p127f * f(0x40000000 | fraction)};
  return {p * f(bit_cast<u32>(scale) | fraction)};
}

inline Result<float> exp32_a11(float x) {
  const u32 bits = bit_cast<u32>(x), magnitude = bits & 0x7FFFFFFF;
  const bool negative = bits >> 31;
  if (magnitude > 0x7F800000) return {x};
  Result<float> y;
  if (!negative && bits >= 0x42B17218 && bits < 0x7F800000) y.status = kelStatusOverflow;
  if (negative && bits >= 0xC2AEAC50 && bits < 0xFF800000) y.status = kelStatusUnderflow;
  if (!negative && bits >= 0x43200000) {
    y.value = HUGE_VALF;
  } else if (negative && bits > 0xC3200000) {
    y.value = 0.0f;
  } else if (magnitude < 0x42AE8000) {
    const float t = x * f(0x3FB8AA3B) - f(0xCB400000);
    const float kf = t + f(0xCB400000);
    const float r = x - kf * f(0x3F317218);
    const float p = ((f(0x3E2AAA8D) * r + f(0x3F00F657)) * r + f(0x3F80017A)) * r + 1.0f;
    y.value = f((bit_cast<u32>(t) + 0x7F) << 23) * p;
  } else {
    const double xd = x, shifter = d(0x4338000000000000);
    const double k = (xd * d(0x3FF71547652B82FE) + shifter) - shifter;
    const double r = xd - k * d(0x3FE62E42FEFA39EF);
    const double p =
        1.0000000005585943 +
        r * (1.0000000365391162 +
             r * (0.49999992032320767 +
                  r * (0.16666419190347548 +
                       r * (0.041668231801027439 + r * (0.0083748983630576226 + r * 0.0013836742051737468)))));
    y.value = float(std::ldexp(p, int(k)));
    // Between -87.25 and -87.3365 nothing underflows yet; -87.3365 itself is still a normal number.
    if (std::isinf(y.value))
      y.flags = FE_OVERFLOW;
    else if (negative && y.value < 0x1p-126f)
      y.flags = FE_UNDERFLOW;
  }
  return y;
}

} // namespace exp_reference
