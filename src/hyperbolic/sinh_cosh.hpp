// What sinh and cosh of floats and of doubles share: which of the two, and the functions of one element.
#pragma once

#include "exact/rounding_test.hpp"
#include "frame/status.hpp"
#include "hyperbolic/factors.hpp"

namespace kelvm::inline KELVM_BUILD {

/// Which of the two: its part of a pair, and its sign.
struct OfSinh {
  template <class F> static F of(const EvenOdd<F>& pair) { return pair.odd; }
  template <class V> static V with_its_sign(V y, V x) { return with_sign(y, sign_of(x)); }
};
struct OfCosh {
  template <class F> static F of(const EvenOdd<F>& pair) { return pair.even; }
  template <class V> static V with_its_sign(V y, V) { return y; }
};

/// The complete function, rounded once.
template <class Which, class T> T sinh_or_cosh(T x, kelStatus& status) {
  if (is_nan(x)) return x + x;
  if (is_infinite(x)) return Which::with_its_sign(infinity<T>, x);
  const auto magnitude = [x] {
    if (sizeof(T) == 4 && abs(x) > 90) return infinity<T>;
    const ScaledSum y = Which::of(any_hyperbolic(abs(double(x))));
    if constexpr (sizeof(T) == 8) {
      return y.rounded();
    } else {
      const double scale = power_of_two(y.exponent);
      return round_to_float(scale * y.value);
    }
  }();
  return Which::with_its_sign(is_infinite(magnitude) ? overflow<T>(status) : magnitude, x);
}

} // namespace kelvm::inline KELVM_BUILD
