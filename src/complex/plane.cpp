#include "complex/plane.hpp"

namespace kelvm::inline KELVM_BUILD {

double any_product(Part part, const ScaledSum& hyperbolic, const ScaledSum& circular) {
  const double h = hyperbolic.value.hi, c = circular.value.hi;
  const std::uint64_t sign = sign_of(h) ^ sign_of(c);
  if (h == 0 || c == 0) return with_sign(0.0, sign);
  if (is_nan(h) || is_nan(c)) return is_infinite(h) && part == Part::real ? h : default_nan<double>();
  if (is_infinite(h)) return with_sign(infinity<double>, sign);
  return product(hyperbolic, circular).rounded();
}

} // namespace kelvm::inline KELVM_BUILD
