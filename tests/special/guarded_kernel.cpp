#include "guarded_kernel.hpp"

#include "frame/frame.hpp"

namespace kelvm::inline KELVM_BUILD {
namespace {

struct Third : KernelDefaults {
  using Element = double;
  static constexpr bool covers_everything = true;
  template <class V> static V formula(V x) { return x / splat<V>(3.0) + splat<V>(0x1p-60); }
};

} // namespace
} // namespace kelvm::inline KELVM_BUILD

kelStatus KELVM_GUARDED(const double* x, double* y, int len) {
  return kelvm::call<kelvm::Shape{1, 1, 1, 1}>(kelvm::Order::CountFirst, kelvm::Third{}, {x, nullptr, y, nullptr}, len);
}
