// Complex products z w and z conj(w).
//
//   32fc A24    in double, where the products are exact: one sum and one rounding, a part below 0.51 ulp
//   64fc A53    both products of a part as an exact double-word, their sum rounded once where it does not cancel, and
//               below 1 ulp where it does: Jeannerod, Louvet, Muller, "Further analysis of Kahan's algorithm for the
//               accurate computation of 2x2 determinants", 2013
//   the others  the textbook formula in the type itself, error sqrt(5) u of the norm: Brent, Percival, Zimmermann,
//               "Error bounds on complex floating-point multiplication", 2007
//
// Any operands go in, and what comes out is looked at: where an intermediate value may have left the range of the type,
// element() computes. The frame takes back the flags that no element earned.
#include "complex/annex_g.hpp"
#include "complex/size_test.hpp"
#include "frame/export.hpp"
#include "kelvm/complex.h"

namespace kelvm::inline KELVM_BUILD::complex_products {
namespace {

/// C, Annex G.5.1, example 1.
template <class T> Pair<T> multiply_element(const Operands& o, kelStatus& status) {
  if (o.finite())
    return with_code<T>(o, sum_of_products(o.a, o.c, -o.b, o.d).rounded(),
                        sum_of_products(o.a, o.d, o.b, o.c).rounded(), status);
  const double a = unit(o.a), b = unit(o.b), c = unit(o.c), d = unit(o.d);
  const double re = quiet_sum(quiet_product(a, c), -quiet_product(b, d));
  const double im = quiet_sum(quiet_product(a, d), quiet_product(b, c));
  if (!is_nan(re) || !is_nan(im) || !(o.first_infinite() || o.second_infinite()))
    return with_code<T>(o, re, im, status);
  const Operands r = o.recovered();
  return recovered<T>(o, infinity<double>, r.a * r.c - r.b * r.d, r.a * r.d + r.b * r.c, status);
}

enum class Conjugate { no, yes };

/// z w or z conj(w). P: product.
template <class T, class P, Conjugate C> struct Multiplication : ComplexDefaults {
  using Element = T;
  static constexpr bool spurious_underflow = true;
  static constexpr bool spurious_exceptions = true;
  static constexpr Magnitudes ordinary = no_magnitudes; // the size of two parts may look like a NaN
  static constexpr int vectors_in_flight = P::products_in_flight;
  template <class V> using ResultTest = SizeTest<V>;

  template <class V> static SignMask<V> special(V, V, V, V) { return SignMask<V>{}; }
  template <class V> static Pair<V> formula(V a, V b, V c, V d, ResultTest<V>& test) {
    return P::template product<C>(a, b, c, d, test);
  }
  template <class V> static SignMask<V> nan_lanes(V a, V b, V c, V d) { return quiet_nans(a, b, c, d); }
  static Pair<T> element(T a, T b, T c, T d, kelStatus& status) {
    return multiply_element<T>({a, b, c, C == Conjugate::yes ? -d : d}, status);
  }
};
/// The plain formulas. Not fused: products commute, and z conj(z) is real.
template <Conjugate C, class V> Pair<V> plain_product(V a, V b, V c, V d) {
  if constexpr (C == Conjugate::yes)
    return {a * c + b * d, b * c - a * d};
  else
    return {a * c - b * d, a * d + b * c};
}
/// The same bits where all products are exact.
template <Conjugate C, class V> Pair<V> exact_product(V a, V b, V c, V d) {
  if constexpr (C == Conjugate::yes)
    return {mul_add(a, c, b * d), mul_sub(b, c, a * d)};
  else
    return {mul_sub(a, c, b * d), mul_add(a, d, b * c)};
}

/// Floats at full precision. A result that overflows float goes to element() for its code.
struct FloatFull {
  static constexpr int products_in_flight = 4;

  template <Conjugate C, class V> static Pair<V> product(V a, V b, V c, V d, SizeTest<V>& test) {
    const Pair<V> z =
        pair_in_double([](auto a, auto b, auto c, auto d) { return exact_product<C>(a, b, c, d); }, a, b, c, d);
    test.results(z);
    return z;
  }
};

/// The plain formula in the type itself. Results that are below the limit, but not zero, may have lost bits.
struct Short {
  static constexpr int products_in_flight = 4;
  template <Conjugate C, class V> static Pair<V> product(V a, V b, V c, V d, SizeTest<V>& test) {
    const Pair<V> z = plain_product<C>(a, b, c, d);
    const V size = either_size(z.first, z.second);
    test.results(z);
    test.small(size, sizeof(Lane<V>) == 8 ? Lane<V>(0x1p-959) : Lane<V>(0x1p-119), nonzero(size));
    return z;
  }
};

enum class Sign { plus, minus };

struct DoubleFull {
  static constexpr int products_in_flight = has_fused ? 2 : 1;

  /// x y + z w, or x y - z w, rounded. Where the sum of p and q is inexact, the errors are small beside it; where it is
  /// exact, the sum of the errors is exact or no larger than the result: below 1 ulp.
  template <Sign S, class V>
  static V sum_of_two(ExactFactor<V> x, ExactFactor<V> y, ExactFactor<V> z, ExactFactor<V> w, SizeTest<V>& test) {
    const DoubleWord<V> p = two_product(x, y), zw = two_product(z, w);
    const DoubleWord<V> q = S == Sign::plus ? zw : DoubleWord<V>{-zw.hi, -zw.lo};
    // They are exact where one of them is above the limit; both may have a zero factor.
    test.small(either_size(p.hi, q.hi), 0x1p-895,
               (nonzero(x.value) & nonzero(y.value)) | (nonzero(z.value) & nonzero(w.value)));
    // two_sum with the sign of its error changed: what is subtracted from a sum of -0 leaves -0.
    const V sum = p.hi + q.hi, q_part = sum - p.hi;
    const V minus_error = ((sum - q_part) - p.hi) + (q_part - q.hi);
    return sum - (minus_error - (p.lo + q.lo));
  }
  /// An intermediate overflow makes the result a NaN or infinite.
  template <Conjugate C, class V> static Pair<V> product(V a, V b, V c, V d, SizeTest<V>& test) {
    const ExactFactor<V> sa(a), sb(b), sc(c), sd(d);
    Pair<V> z;
    if constexpr (C == Conjugate::yes)
      z = {sum_of_two<Sign::plus>(sa, sc, sb, sd, test), sum_of_two<Sign::minus>(sb, sc, sa, sd, test)};
    else
      z = {sum_of_two<Sign::minus>(sa, sc, sb, sd, test), sum_of_two<Sign::plus>(sa, sd, sb, sc, test)};
    test.results(z);
    return z;
  }
};

template <class P> using Mul32 = Multiplication<float, P, Conjugate::no>;
template <class P> using Mul64 = Multiplication<double, P, Conjugate::no>;
template <class P> using MulByConj32 = Multiplication<float, P, Conjugate::yes>;
template <class P> using MulByConj64 = Multiplication<double, P, Conjugate::yes>;

} // namespace

KELVM_BINARY(kelsMul_32fc_A11, Mul32<Short>)
KELVM_BINARY(kelsMul_32fc_A21, Mul32<Short>)
KELVM_BINARY(kelsMul_32fc_A24, Mul32<FloatFull>)
KELVM_BINARY(kelsMul_64fc_A26, Mul64<Short>)
KELVM_BINARY(kelsMul_64fc_A50, Mul64<Short>)
KELVM_BINARY(kelsMul_64fc_A53, Mul64<DoubleFull>)
KELVM_BINARY(kelsMulByConj_32fc_A11, MulByConj32<Short>)
KELVM_BINARY(kelsMulByConj_32fc_A21, MulByConj32<Short>)
KELVM_BINARY(kelsMulByConj_32fc_A24, MulByConj32<FloatFull>)
KELVM_BINARY(kelsMulByConj_64fc_A26, MulByConj64<Short>)
KELVM_BINARY(kelsMulByConj_64fc_A50, MulByConj64<Short>)
KELVM_BINARY(kelsMulByConj_64fc_A53, MulByConj64<DoubleFull>)

} // namespace kelvm::inline KELVM_BUILD::complex_products
