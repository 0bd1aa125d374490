#include "trig/reduction.hpp"

#include "trig/trig_tables.hpp"

namespace kelvm::inline KELVM_BUILD {
namespace {

using Word = std::uint64_t;
using Word128 = unsigned __int128;

constexpr double from_pattern(Word bits) { return __builtin_bit_cast(double, bits); }

/// pi/4 in parts: 22 bits each for 2^23 <= |x| < 2^30, 30 bits each below.
constexpr double five_parts[] = {from_pattern(0x3FE921FA00000000), from_pattern(0x3EA5444300000000),
                                 from_pattern(0xBD373DCA00000000), from_pattern(0xBBF3B39A00000000),
                                 from_pattern(0x3A845C06E0E68948)};
constexpr double four_parts[] = {from_pattern(0x3FE921FB54000000), from_pattern(0x3E010B4612000000),
                                 from_pattern(0xBC2676733C000000), from_pattern(0x3A61701B839A2520)};

template <int N> DoubleWord<double> subtract_multiple(double x, double m, const double (&parts)[N]) {
  double y = x - m * parts[0], tail = 0;
  for (int i = 1; i < N - 1; ++i) {
    const DoubleWord<double> sum = two_sum(y, -(m * parts[i]));
    y = sum.hi;
    tail += sum.lo;
  }
  return fast_two_sum(y, tail - m * parts[N - 1]);
}

Quadrant reduce_medium(double x) {
  const int n = int(x * from_pattern(0x3FF45F306DC9C883)); // x 4/pi, below 2^31
  const int even = n + (n & 1);
  const double m = even;
  return {even / 2 & 3, x < 0x1p23 ? subtract_multiple(x, m, four_parts) : subtract_multiple(x, m, five_parts)};
}

Word high(Word128 x) { return Word(x >> 64); }

/// The upper word of two, shifted up by 0 .. 63 bits.
Word shifted_up(Word upper, Word lower, int bits) { return upper << bits | lower >> 1 >> (63 - bits); }

/// 2/pi with its first bits at the highest address, so that eight bytes from anywhere are a word of it.
struct Bytes {
  static constexpr int words = int(sizeof two_over_pi / sizeof two_over_pi[0]);
  unsigned char bytes[8 * words];
};
constexpr Bytes reversed_two_over_pi = [] {
  Bytes reversed{};
  for (int i = 0; i < Bytes::words; ++i)
    for (int k = 0; k < 8; ++k)
      reversed.bytes[8 * (Bytes::words - 1 - i) + k] = (unsigned char)(two_over_pi[i] >> 8 * k);
  return reversed;
}();

Quadrant reduce_large(double x) {
  const Word pattern = bits(x);
  const int exponent = int(pattern >> 52) - 1075; // x = significand 2^exponent
  Word significand = (pattern & 0xFFFFFFFFFFFFF) | Word(1) << 52;

  // The fraction bits of 2/pi with weights 2^(1 - exponent) and below, from a byte on: what is above contributes
  // multiples of 4.
  const int first = exponent - 2 + 64;
  significand <<= first & 7;
  const unsigned char* last = &reversed_two_over_pi.bytes[sizeof reversed_two_over_pi - (first >> 3)];
  const auto word = [&](int i) {
    Word w;
    std::memcpy(&w, last - 8 * (i + 1), sizeof w);
    return w;
  };

  // The product modulo 4, in units of 2^-62, 2^-126, 2^-190.
  const Word128 low = Word128(significand) * word(2);
  const Word128 middle = Word128(significand) * word(1) + high(low);
  const Word top = significand * word(0) + high(middle);
  const int number = int((top + (Word(1) << 61)) >> 62) & 3;

  // The fraction as sign and magnitude, in units of 2^-64, 2^-128, 2^-192, and shifted up until its first bit is 1.
  const Word negative = Word(std::int64_t(top << 2) >> 63);
  const Word f0 = (top << 2 | Word(middle) >> 62) ^ negative;
  const Word f1 = (Word(middle) << 2 | Word(low) >> 62) ^ negative;
  const Word f2 = Word(low) << 2 ^ negative;
  const int zeros = __builtin_clzll(f0 | 1);
  const Word upper = shifted_up(f0, f1, zeros), lower = shifted_up(f1, f2, zeros);

  // Times pi/2 = 2 (pi_0 2^-64 + pi_1 2^-128), the upper 128 bits.
  constexpr Word pi_0 = 0xC90FDAA22168C234, pi_1 = 0xC4C6628B80DC1CD1;
  const Word128 y = Word128(upper) * pi_0 + high(Word128(upper) * pi_1) + high(Word128(lower) * pi_0);

  const double unit = from_pattern(Word(1023 - 63 - zeros) << 52); // of the upper word of y
  const double head = double(std::int64_t(high(y) >> 11)) * 0x1p11;
  const double tail = double(std::int64_t(Word(y >> 12) & 0x7FFFFFFFFFFFFFFF)) * 0x1p-52;
  const DoubleWord<double> sum = fast_two_sum(head, tail);
  const Word sign = negative << 63;
  return {number, {flip_sign(sum.hi * unit, sign), flip_sign(sum.lo * unit, sign)}};
}

} // namespace

Quadrant reduce_to_quadrant(double x) {
  const double magnitude = abs(x);
  const Quadrant reduced = magnitude < 0x1p30 ? reduce_medium(magnitude) : reduce_large(magnitude);
  const Word sign = sign_of(x);
  const int negative = int(sign >> 63); // arithmetic: signs of arguments are not for branch prediction
  return {((reduced.number ^ -negative) + negative) & 3,
          {flip_sign(reduced.y.hi, sign), flip_sign(reduced.y.lo, sign)}};
}

} // namespace kelvm::inline KELVM_BUILD
