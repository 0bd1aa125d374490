// Fixed-point numbers of many words, for single elements whose intermediate values need more bits than a double-double
// has.
#pragma once

#include "exact/scaled_sum.hpp"

#include <algorithm>

namespace kelvm::inline KELVM_BUILD {

/// Arithmetic on numbers with that many words before and behind the point. Sums are exact, modulo the range; products
/// and quotients are cut, with an error below two units of the last place.
class FixedPoint {
public:
  using Word = std::uint64_t;
  static constexpr int most_words = 66;
  /// In two's complement, lowest word first; what lies beyond the words in use is left as it was.
  struct Number {
    Word word[most_words];
    Word& operator[](int i) { return word[i]; }
    Word operator[](int i) const { return word[i]; }
  };

  FixedPoint(int whole_words, int fraction_words) : fraction_(fraction_words), words_(whole_words + fraction_words) {}
  int fraction_words() const { return fraction_; }

  /// x 2^exponent, cut where the words end.
  Number number(double x, int exponent = 0) const {
    Number a;
    std::fill_n(a.word, words_, 0);
    if (x == 0) return a;
    const Scaled s = scaled(x);
    const Word significand = (bits(s.fraction) & 0xFFFFFFFFFFFFF) | Word(1) << 52;
    const int lowest = 64 * fraction_ + s.exponent + exponent - 52, first = lowest >> 6, shift = lowest & 63;
    if (first >= 0 && first < words_) a[first] = significand << shift;
    if (first + 1 >= 0 && first + 1 < words_) a[first + 1] = significand >> 1 >> (63 - shift);
    return x < 0 ? negated(a) : a;
  }
  /// Of fraction bits, highest word first.
  Number from_fraction(const Word* fraction) const {
    Number a;
    std::reverse_copy(fraction, fraction + fraction_, a.word);
    std::fill(a.word + fraction_, a.word + words_, 0);
    return a;
  }

  Number sum(const Number& a, const Number& b) const {
    Number s;
    Word128 carry = 0;
    for (int i = 0; i < words_; ++i) {
      carry += Word128(a[i]) + b[i];
      s[i] = Word(carry);
      carry >>= 64;
    }
    return s;
  }
  Number negated(const Number& a) const {
    Number n;
    Word carry = 1;
    for (int i = 0; i < words_; ++i) {
      n[i] = ~a[i] + carry;
      carry &= n[i] == 0;
    }
    return n;
  }
  Number difference(const Number& a, const Number& b) const { return sum(a, negated(b)); }

  Number product(const Number& a, const Number& b) const {
    const Number u = magnitude(a), v = magnitude(b);
    const int v_words = used_words(v);
    Word sum[most_words + 1]; // from one word below the last place on
    std::fill_n(sum, words_ + 1, 0);
    for (int i = 0; i < words_; ++i) {
      const int first = std::max(fraction_ - 1 - i, 0), offset = i - fraction_ + 1;
      const int end = std::min(v_words, words_ + 1 - offset);
      if (u[i] == 0 || first >= end) continue;
      Word128 carry = 0;
      for (int j = first; j < end; ++j) {
        carry += Word128(u[i]) * v[j] + sum[j + offset];
        sum[j + offset] = Word(carry);
        carry >>= 64;
      }
      if (end + offset <= words_) sum[end + offset] = Word(carry);
    }
    Number p;
    std::copy_n(sum + 1, words_, p.word);
    return negative(a) != negative(b) ? negated(p) : p;
  }
  Number quotient(const Number& a, std::uint32_t n) const {
    Number q = magnitude(a);
    Word rest = 0;
    for (int i = used_words(q) - 1; i >= 0; --i) {
      const Word upper = rest << 32 | q[i] >> 32, lower = upper % n << 32 | (q[i] & 0xFFFFFFFF);
      q[i] = upper / n << 32 | lower / n;
      rest = lower % n;
    }
    return negative(a) ? negated(q) : q;
  }
  /// a 2^-shift, 0 < shift < 64, toward minus infinity.
  Number shifted_down(const Number& a, int shift) const {
    Number s;
    for (int i = 0; i < words_ - 1; ++i) s[i] = a[i] >> shift | a[i + 1] << (64 - shift);
    s[words_ - 1] = Word(std::int64_t(a[words_ - 1]) >> shift);
    return s;
  }

  /// The integer nearest to a, modulo 2^64.
  Word nearest(const Number& a) const { return sum(a, number(0.5))[fraction_]; }
  /// a less the nearest integer.
  Number rest(const Number& a) const {
    const Number half = number(0.5);
    Number shifted = sum(a, half);
    std::fill(shifted.word + fraction_, shifted.word + words_, 0);
    return difference(shifted, half);
  }

  /// The first hundred bits or so, 1 <= |head| <= 2, or zero.
  ScaledSum leading(const Number& a) const {
    const Number m = magnitude(a);
    const int used = used_words(m);
    if (used == 0) return {{0, 0}, 0};
    const auto word = [&](int i) { return used >= i ? m[used - i] : 0; };
    const int zeros = __builtin_clzll(word(1));
    const auto shifted_up = [&](Word high, Word low) { return high << zeros | low >> 1 >> (63 - zeros); };
    const Word upper = shifted_up(word(1), word(2)), lower = shifted_up(word(2), word(3));
    const double head = double(upper >> 11) * 0x1p-52, tail = double((upper & 0x7FF) << 52 | lower >> 12) * 0x1p-115;
    const DoubleWord<double> sum = fast_two_sum(head, tail);
    const double sign = negative(a) ? -1 : 1;
    return {{sign * sum.hi, sign * sum.lo}, 64 * (used - fraction_) - 1 - zeros};
  }

private:
  using Word128 = unsigned __int128;

  bool negative(const Number& a) const { return a[words_ - 1] >> 63 != 0; }
  Number magnitude(const Number& a) const { return negative(a) ? negated(a) : a; }
  int used_words(const Number& a) const {
    int n = words_;
    while (n > 0 && a[n - 1] == 0) --n;
    return n;
  }

  int fraction_, words_;
};

} // namespace kelvm::inline KELVM_BUILD
