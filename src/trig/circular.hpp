// What Sin, Cos, SinCos and CIS of every type and accuracy have in common. P, the arithmetic of an accuracy, has
//
//   using Element = double;
//   static constexpr double last = ...;     the largest |x| that its formulas cover
//   template <class V> V sine(V x), V cosine(V x), Pair<V> sine_cosine(V x)
//
// sine_cosine gives the bits of sine and cosine. Elements beyond `last` are computed in double, with the arithmetic of
// the most accurate members.
#pragma once

#include "frame/member.hpp"
#include "trig/reduction.hpp"

namespace kelvm::inline KELVM_BUILD {

/// Sine and cosine of any finite double, with the bits of the 64f_A53 members.
double sine_of(double x);
double cosine_of(double x);
Pair<double> sine_cosine_of(double x);

template <class P> struct Circular : KernelDefaults {
  using Element = typename P::Element;
  static constexpr bool stray_underflow = true; // powers of small remainders
  static constexpr int vectors_in_flight = P::vectors_in_flight;

  template <class V> static Marks<V> special(V x) { return above(abs(x), P::last); }

protected:
  static bool is_finite(Element x) { return bits(abs(x)) < bits(infinity<Element>); }

  /// The result for an infinity or a NaN. An infinity is told from a NaN by the upper word of a double alone, so that a
  /// NaN whose payload lies in the lower word reports a domain error too.
  static Element not_finite(Element x, kelStatus& status) {
    const auto upper_word = [](Element y) { return bits(y) >> (8 * sizeof y - 32); };
    return upper_word(abs(x)) == upper_word(infinity<Element>) ? domain_error<Element>(status) : default_nan<Element>();
  }
};

template <class P> struct Sin : Circular<P> {
  template <class V> static V formula(V x) { return P::sine(x); }
  static typename P::Element element(typename P::Element x, kelStatus& status) {
    return Sin::is_finite(x) ? typename P::Element(sine_of(x)) : Sin::not_finite(x, status);
  }
};

template <class P> struct Cos : Circular<P> {
  template <class V> static V formula(V x) { return P::cosine(x); }
  static typename P::Element element(typename P::Element x, kelStatus& status) {
    return Cos::is_finite(x) ? typename P::Element(cosine_of(x)) : Cos::not_finite(x, status);
  }
};

template <class P> struct SinCos : Circular<P> {
  using T = typename P::Element;
  template <class V> static Pair<V> formula(V x) { return P::sine_cosine(x); }
  static Pair<T> element(T x, kelStatus& status) {
    if (!SinCos::is_finite(x)) {
      const T nan = SinCos::not_finite(x, status);
      return {nan, nan};
    }
    const Pair<double> both = sine_cosine_of(x);
    return {T(both.first), T(both.second)};
  }
};

/// cos x + i sin x. A NaN, whatever its payload, reports nothing.
template <class P> struct CIS : SinCos<P> {
  using T = typename P::Element;
  template <class V> static Pair<V> formula(V x) {
    const Pair<V> both = P::sine_cosine(x);
    return {both.second, both.first};
  }
  static Pair<T> element(T x, kelStatus& status) {
    if (x != x) return {default_nan<T>(), default_nan<T>()};
    const Pair<T> both = SinCos<P>::element(x, status);
    return {both.second, both.first};
  }
};

} // namespace kelvm::inline KELVM_BUILD
