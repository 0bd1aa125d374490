// sinh and cosh of floats: the addition theorem of sinh_cosh_64f.cpp with steps of ln 2 / 32 in double for A24, with
// steps of ln 2 in float for A21 and A11. A24 is correctly rounded: results within 2^-44 of a midpoint between two
// floats are evaluated again, to 2^-58. The error of sinh is largest where k = 1 and |x| near ln 2 / 64: the halves of
// two table values have errors of 3/4 2^-53 together, 2^-46.9 of x; other roundings, 5 2^-53, and the term that its
// series lacks, 2^-51.4, make it 2^-46.7. In cosh nothing cancels: 6 roundings and 2^-53.3 of the fit, 2^-50.2.
//
// Without fused operations cosh A21 is (e + 1/e) / 2, e = e^|x|: 2^-22.
//
// Exceptional inputs: overflow beyond 89.416; infinities stay (cosh: +inf), NaNs are quieted.
#include "frame/export.hpp"
#include "hyperbolic/sinh_cosh.hpp"
#include "kelvm/hyperbolic.h"

namespace kelvm::inline KELVM_BUILD::sinh_cosh_32f {
namespace {

/// The series of sinh is Taylor's: its next term is below 2^-51.4.
struct SeriesA24 {
  static constexpr bool has_rests = false;
  static constexpr double sinh[] = {0x1.5555555555555p-3, 0x1.1111111111111p-7};
  static constexpr const auto& cosh = factors_tables::cosh_short;
};

template <class Which> struct A24 : KernelDefaults {
  using Element = float;
  template <class V> using ResultTest = RoundingTest;
  static constexpr bool spurious_underflow = true; // a subnormal result, which is x
  static constexpr Magnitudes ordinary{0x1p-28, 89};
  template <class V> static SignMask<V> special(V x) { return above(abs(x), 89.0f); }
  template <class V> static V formula(V x, RoundingTest& test) {
    const V y = in_double_decided<44>(
        test, [](auto d) { return Which::of(Rounded<Accuracy::bits40, SeriesA24>::hyperbolic(d)); }, abs(x));
    return Which::with_its_sign(y, x);
  }
  static float element(float x, kelStatus& status) { return sinh_or_cosh<Which>(x, status); }
};

template <class Which, class Accuracy> struct InFloat : KernelDefaults {
  using Element = float;
  static constexpr bool spurious_underflow = true; // r^2 of a tiny r
  static constexpr Magnitudes ordinary{0x1p-28, 87};
  template <class V> static SignMask<V> special(V x) { return above(abs(x), 87.0f); }
  template <class V> static V formula(V x) { return Which::with_its_sign(Which::of(Accuracy::hyperbolic(abs(x))), x); }
  static float element(float x, kelStatus& status) { return sinh_or_cosh<Which>(x, status); }
};

/// Without fused operations a division costs less than the second series.
struct CoshA21 : InFloat<OfCosh, SingleA21> {
  template <class V> static V formula(V x) {
    if constexpr (has_fused) {
      return InFloat::formula(x);
    } else {
      const V e = SingleA21::exponential(abs(x)).value;
      return 0.5f * (e + 1.0f / e);
    }
  }
};

} // namespace

KELVM_UNARY(kelsSinh_32f_A11, InFloat<OfSinh, SingleA11>)
KELVM_UNARY(kelsSinh_32f_A21, InFloat<OfSinh, SingleA21>)
KELVM_UNARY(kelsSinh_32f_A24, A24<OfSinh>)
KELVM_UNARY(kelsCosh_32f_A11, InFloat<OfCosh, SingleA11>)
KELVM_UNARY(kelsCosh_32f_A21, CoshA21)
KELVM_UNARY(kelsCosh_32f_A24, A24<OfCosh>)

} // namespace kelvm::inline KELVM_BUILD::sinh_cosh_32f
