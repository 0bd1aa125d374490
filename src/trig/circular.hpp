// What Sin, Cos, SinCos and CIS of every type and accuracy have in common. P, the arithmetic of an accuracy, has
//
//   using Element = double;
//   static constexpr double last = ...;             the largest |x| that reduce() covers
//   template <class V> auto reduce(V x), auto reduce_any(V x)
//   V sine(r), V cosine(r)                          of such a reduced argument
//   Pair<V> sine_cosine(r)                          the bits of sine and cosine
//   template <class V> using WideResultTest = ...;  reduce_any(x, test) takes one where it is not NoResultTest
//
// reduce_any() is for any finite x, with the results of reduce() where that covers x. Elements beyond `last` are
// computed in double, with the arithmetic of the most accurate functions, floats too.
#pragma once

#include "frame/export.hpp"
#include "trig/reduction.hpp"

namespace kelvm::inline KELVM_BUILD {

/// Sine and cosine of any finite double, with the bits of the 64f_A53 functions.
double sine_of(double x);
double cosine_of(double x);
Pair<double> sine_cosine_of(double x);

template <class P> struct Circular : KernelDefaults {
  using Element = typename P::Element;
  static constexpr bool spurious_underflow = true; // powers of small remainders
  static constexpr int vectors_in_flight = P::vectors_in_flight;
  static constexpr bool has_wide_formula = true;
  template <class V> using WideResultTest = typename P::template WideResultTest<V>;

  static constexpr Magnitudes ordinary{sizeof(Element) == 8 ? 0x1p-60 : 0x1p-28, P::last};
  template <class V> static SignMask<V> special(V x) { return above(abs(x), P::last); }

  template <class V> static V nan_result(V) { return splat<V>(default_nan<Element>()); }

protected:
  /// The result for an infinity or a NaN. An infinity is told from a NaN by the upper word of a double alone, so that a
  /// NaN whose payload lies in the lower word reports a domain error too.
  static Element not_finite(Element x, kelStatus& status) {
    const auto upper_word = [](Element y) { return bits(y) >> (8 * sizeof y - 32); };
    return upper_word(abs(x)) == upper_word(infinity<Element>) ? domain_error<Element>(status) : default_nan<Element>();
  }
};

template <class P> struct Sin : Circular<P> {
  template <class V> static V formula(V x) { return P::sine(P::reduce(x)); }
  template <class V, class... Test> static V wide_formula(V x, Test&... test) {
    return P::sine(P::reduce_any(x, test...));
  }
  static typename P::Element element(typename P::Element x, kelStatus& status) {
    return is_finite(x) ? typename P::Element(sine_of(x)) : Sin::not_finite(x, status);
  }
};

template <class P> struct Cos : Circular<P> {
  template <class V> static V formula(V x) { return P::cosine(P::reduce(x)); }
  template <class V, class... Test> static V wide_formula(V x, Test&... test) {
    return P::cosine(P::reduce_any(x, test...));
  }
  static typename P::Element element(typename P::Element x, kelStatus& status) {
    return is_finite(x) ? typename P::Element(cosine_of(x)) : Cos::not_finite(x, status);
  }
};

template <class P> struct SinCos : Circular<P> {
  using T = typename P::Element;
  template <class V> static Pair<V> formula(V x) { return P::sine_cosine(P::reduce(x)); }
  template <class V, class... Test> static Pair<V> wide_formula(V x, Test&... test) {
    return P::sine_cosine(P::reduce_any(x, test...));
  }
  template <class V> static Pair<V> nan_result(V) { return {splat<V>(default_nan<T>()), splat<V>(default_nan<T>())}; }
  static Pair<T> element(T x, kelStatus& status) {
    if (!is_finite(x)) {
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
  template <class V> static Pair<V> formula(V x) { return exchanged(SinCos<P>::formula(x)); }
  template <class V, class... Test> static Pair<V> wide_formula(V x, Test&... test) {
    return exchanged(SinCos<P>::wide_formula(x, test...));
  }
  static Pair<T> element(T x, kelStatus& status) {
    if (is_nan(x)) return {default_nan<T>(), default_nan<T>()};
    return exchanged(SinCos<P>::element(x, status));
  }

private:
  template <class V> static Pair<V> exchanged(Pair<V> both) { return {both.second, both.first}; }
};

} // namespace kelvm::inline KELVM_BUILD
