// What the Atan2 functions of both types share: the angles that no formula is needed for.
#pragma once

#include "frame/status.hpp"
#include "trig/atan_core.hpp"

namespace kelvm::inline KELVM_BUILD {

/// atan2(y, x) for every pair of operands, special cases as in C's Annex F: positive(y, x) computes the angle of finite
/// y > 0 and x != 0 as the type rounds it.
template <class T, class Positive> inline T arc_tangent_2(T y, T x, kelStatus& status, Positive positive) {
  if (is_nan(y)) return y + y;
  if (is_nan(x)) return x + x;
  const bool left = sign_of(x) != 0;
  const auto with_sign_of_y = [y](double angle) { return with_sign(T(angle), sign_of(y)); };
  using namespace inverse_trig;
  if (y == 0 || (abs(x) == infinity<T> && abs(y) != infinity<T>)) return with_sign_of_y(left ? pi_head : 0);
  if (abs(y) == infinity<T> && abs(x) == infinity<T>)
    return with_sign_of_y(left ? three_quarters_pi : half_pi_head / 2);
  if (x == 0 || abs(y) == infinity<T>) return with_sign_of_y(half_pi_head);
  const T result = with_sign(positive(abs(y), x), sign_of(y));
  return abs(result) < smallest_normal<T> ? underflow(status, result) : result;
}

} // namespace kelvm::inline KELVM_BUILD
