#include "trig/reduction.hpp"

#include "simd/integer.hpp"
#include "simd/table.hpp"
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

template <class V, int N> DoubleWord<V> subtract_multiple(V x, V m, const double (&parts)[N]) {
  V y = x - m * parts[0], tail{};
#pragma GCC unroll 8
  for (int i = 1; i < N - 1; ++i) {
    const DoubleWord<V> sum = two_sum(y, -(m * parts[i]));
    y = sum.hi;
    tail += sum.lo;
  }
  return fast_two_sum(y, tail - m * parts[N - 1]);
}

constexpr double four_over_pi = from_pattern(0x3FF45F306DC9C883);

Quadrant reduce_medium(double x) {
  const int n = int(x * four_over_pi); // below 2^31
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

/// pi/2 = 2 (pi_0 2^-64 + pi_1 2^-128)
constexpr Word pi_0 = 0xC90FDAA22168C234, pi_1 = 0xC4C6628B80DC1CD1;

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

  // Times pi/2, the upper 128 bits.
  const Word128 y = Word128(upper) * pi_0 + high(Word128(upper) * pi_1) + high(Word128(lower) * pi_0);

  const double unit = from_pattern(Word(1023 - 63 - zeros) << 52); // of the upper word of y
  const double head = double(std::int64_t(high(y) >> 11)) * 0x1p11;
  const double tail = double(std::int64_t(Word(y >> 12) & 0x7FFFFFFFFFFFFFFF)) * 0x1p-52;
  const DoubleWord<double> sum = fast_two_sum(head, tail);
  const Word sign = negative << 63;
  return {number, {flip_sign(sum.hi * unit, sign), flip_sign(sum.lo * unit, sign)}};
}

// --- the same operations for vectors, whose products have 32-bit factors ---------------------------------------------

template <class B> B low_half(B b) { return b & 0xFFFFFFFF; }

/// The upper and the lower word of a product.
template <class B> Pair<B> long_product(B a, Word constant) {
  const B a_high = a >> 32, c = splat<B>(constant), c_high = splat<B>(constant >> 32);
  const B lowest = multiply_low_halves(a, c);
  const B first = multiply_low_halves(a_high, c) + (lowest >> 32);
  const B second = multiply_low_halves(a, c_high) + low_half(first);
  return {multiply_low_halves(a_high, c_high) + (first >> 32) + (second >> 32), second << 32 | low_half(lowest)};
}
/// 1 in the lanes where a sum modulo 2^64 is below one of its terms.
template <class B> B carry(B sum, B term) { return bit_cast<B>(sum < term) >> 63; }

template <class V> Quadrants<V> reduce_medium(V x) {
  const V n = round<Rounding::to_zero>(x * four_over_pi);
  const V half = round<Rounding::up>(n * 0.5), m = half + half;
  const DoubleWord<V> near = subtract_multiple(x, m, four_parts), far = subtract_multiple(x, m, five_parts);
  const auto is_near = x < splat<V>(0x1p23);
  return {int_bits(half + rounding_constant<double>),
          {select(is_near, near.hi, far.hi), select(is_near, near.lo, far.lo)}};
}

/// Four successive words of 2/pi, from each of them on.
constexpr auto rows_of_two_over_pi = [] {
  std::array<std::array<double, 4>, Bytes::words - 3> rows{};
  for (std::size_t i = 0; i < rows.size(); ++i)
    for (int k = 0; k < 4; ++k) rows[i][k] = from_pattern(two_over_pi[i + k]);
  return rows;
}();

template <class V> Quadrants<V> reduce_large(V x) {
  using B = Bits<V>;
  const B first = (bits(x) >> 52) + Word(64 - 2 - 1075);
  const B significand = ((bits(x) & 0xFFFFFFFFFFFFF) | Word(1) << 52) << (first & 7);

  const auto words = lookup_row<rows_of_two_over_pi>(bit_cast<Int<V>>(first >> 6));
  const B shift = first & 56;
  const auto shifted_up = [](B upper, B lower, B bits) { return upper << bits | lower >> 1 >> (63 - bits); };
  const auto word = [&](int i) { return shifted_up(bits(words[i]), bits(words[i + 1]), shift); };

  // The product modulo 2^192 by half words, lowest first: by the lower half of the significand, then by the upper one.
  const B factors[3] = {word(2), word(1), word(0)};
  B half_word[6], sum{};
#pragma GCC unroll 8
  for (int i = 0; i < 6; ++i) {
    sum = multiply_low_halves(significand, i % 2 == 0 ? factors[i / 2] : factors[i / 2] >> 32) + (sum >> 32);
    half_word[i] = sum;
  }
  const B upper_half = significand >> 32;
  sum = B{};
#pragma GCC unroll 8
  for (int i = 1; i < 6; ++i) {
    const B factor = i % 2 == 1 ? factors[i / 2] : factors[i / 2 - 1] >> 32;
    sum = multiply_low_halves(upper_half, factor) + low_half(half_word[i]) + (sum >> 32);
    half_word[i] = sum;
  }
  const auto joined = [&](int i) { return low_half(half_word[i]) | half_word[i + 1] << 32; };
  const B low = joined(0), middle = joined(2), top = joined(4);

  const B number = (top + (Word(1) << 61)) >> 62;
  const B negative = bit_cast<B>(bit_cast<Int<V>>(top << 2) < 0);
  const B f0 = (top << 2 | middle >> 62) ^ negative;
  const B f1 = (middle << 2 | low >> 62) ^ negative;
  const B f2 = low << 2 ^ negative;
  const B zeros = leading_zeros(f0 | 1);
  const B upper = shifted_up(f0, f1, zeros), lower = shifted_up(f1, f2, zeros);

  const Pair<B> y = long_product(upper, pi_0);
  const B second = long_product(upper, pi_1).first, third = long_product(lower, pi_0).first;
  const B partial = y.second + second, y_low = partial + third;
  const B y_high = y.first + carry(partial, second) + carry(y_low, third);

  const V unit = bit_cast<V>((Word(1023 - 63) - zeros) << 52);
  const V head = to_double(y_high >> 11) * 0x1p11;
  const V tail = to_double((y_high << 52 | y_low >> 12) & 0x7FFFFFFFFFFFFFFF) * 0x1p-52;
  const DoubleWord<V> together = fast_two_sum(head, tail);
  const B sign = negative & sign_bit<V>;
  return {bit_cast<Int<V>>(number), {flip_sign(together.hi * unit, sign), flip_sign(together.lo * unit, sign)}};
}

template <class V> Quadrants<V> reduce_lanes(V x) {
  Quadrants<V> reduced{};
  if constexpr (lanes<V> == 2) {
    // Without shifts by lanes of their own scalars are better off; not as arrays, as a vector loaded right after its
    // lanes were stored waits for all of them.
    const Quadrant a = reduce_to_quadrant(x[0]), b = reduce_to_quadrant(x[1]);
    reduced.number = Int<V>{a.number, b.number};
    reduced.y.hi = V{a.y.hi, b.y.hi};
    reduced.y.lo = V{a.y.lo, b.y.lo};
  } else {
    const V magnitude = abs(x);
    const SignMask<V> is_large = above(magnitude, from_pattern(0x41CFFFFFFFFFFFFF)); // |x| >= 2^30
    if (any(~is_large)) reduced = reduce_medium(select(is_large, splat<V>(0x1p20), magnitude));
    if (any(is_large)) {
      const Quadrants<V> large = reduce_large(select(is_large, magnitude, splat<V>(0x1p30)));
      reduced.number = select(is_large, large.number, reduced.number);
      reduced.y.hi = select(is_large, large.y.hi, reduced.y.hi);
      reduced.y.lo = select(is_large, large.y.lo, reduced.y.lo);
    }
    const Bits<V> sign = sign_of(x);
    const Int<V> negative = int_bits(x) < 0;
    reduced.number = ((reduced.number ^ negative) - negative) & 3;
    reduced.y.hi = flip_sign(reduced.y.hi, sign);
    reduced.y.lo = flip_sign(reduced.y.lo, sign);
  }
  return reduced;
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

void reduce_to_quadrants(Native<double> x, Quadrants<Native<double>>& reduced) { reduced = reduce_lanes(x); }

} // namespace kelvm::inline KELVM_BUILD
