// SPDX-License-Identifier: MIT
/// @file
/// The library for C++20: functions over ranges, the type of whose elements chooses the function of the C interface.
///
///     std::vector<double> x = ..., y(x.size());
///     kelvm::exp(x, y);                                // full precision of the type
///     kelvm::exp<kelvm::accuracy::high>(x, y);         // a few bits less, faster
///     kelvm::status s = kelvm::log(x, y);              // kelvm::status::pole: an element was zero
///
/// Ranges: inputs and outputs are contiguous ranges of `float`, `double`, `std::complex<float>` or
/// `std::complex<double>`: vectors, arrays, spans, and through a span whatever has a pointer and a size. All ranges of
/// a call have the same size and, but for cis() and the abs() of complex numbers, the same type of elements. An output
/// may be the range that is an input; otherwise ranges should not overlap.
///
/// Sizes: ranges whose sizes differ throw `std::invalid_argument` before anything is written; in a program compiled
/// without exceptions the call returns `status::size_error` instead. Empty ranges are no error, nothing is done. Ranges
/// may have more elements than an `int` can count.
///
/// Status: `status::ok`, or the warning of the last element that earned one; every element has its result then. A NaN
/// gives a NaN and no warning, where nothing else is said. A status may be ignored. All of them, in a table:
/// docs/statuses.md.
///
/// Accuracy: a template argument, see `accuracy`. Results depend on the values of their elements alone: splitting a
/// range changes no bit.
///
/// Nothing is allocated and no thread is started; any number of threads may call. With an execution policy, over many
/// cores: kelvm/parallel.hpp. Rounding mode, exception flags: kelvm/types.h.
#ifndef KELVM_KELVM_HPP
#define KELVM_KELVM_HPP

#include "kelvm/kelvm.h"

#include <climits>
#include <complex>
#include <concepts>
#include <cstddef>
#include <span>
#include <type_traits>
#include <utility>
#if defined(__cpp_exceptions)
#  include <stdexcept>
#endif

// Functions that throw and functions that return a status are told apart by name, so that a program may hold both.
#if defined(__cpp_exceptions)
#  define KELVM_WRONG_SIZE_ throws
#else
#  define KELVM_WRONG_SIZE_ returns
#endif

namespace kelvm {

/// How accurate results are. Less is faster; what each level costs: docs/speed.md. A function that knows one accuracy
/// only has that one at every level.
enum class accuracy {
  full, ///< full precision of the type: within 1 ulp, nearly always the correctly rounded result
  high, ///< relative error at most 2^-50 for doubles, 2^-21 for floats; of complex results that of the absolute value
  low   ///< relative error at most 2^-26 for doubles, 2^-11 for floats; of complex results that of the absolute value
};

/// What a call has to report: nothing, an error (then nothing was written), or a warning (then everything was).
enum class status : kelStatus {
  ok = kelStatusOk,
  size_error = kelStatusSizeError,      ///< error: sizes that differ, in a program without exceptions
  null_pointer = kelStatusNullPtrError, ///< error: a range that is not empty begins at a null pointer
  overflow = kelStatusOverflow,         ///< warning: a result overflows its type
  underflow = kelStatusUnderflow,       ///< warning: a result is below the normal range of its type
  pole = kelStatusSingularity,          ///< warning: a pole, the result is an infinity
  domain = kelStatusDomain              ///< warning: an argument outside the domain, the result is a NaN
};

/// The status in words, for people.
inline const char* to_string(status s) noexcept { return kelvmStatusText(static_cast<kelStatus>(s)); }

inline namespace KELVM_WRONG_SIZE_ {
namespace detail {

template <class T>
concept element = std::same_as<T, float> || std::same_as<T, double> || std::same_as<T, std::complex<float>> ||
    std::same_as<T, std::complex<double>>;

// What a span can be made of, as an output or an input of a call. No span is made of a temporary that owns what it
// holds.
template <class R>
concept range = requires(R&& r) {
  std::span(std::forward<R>(r));
};

template <range R> using element_of = typename decltype(std::span(std::declval<R>()))::element_type;

// The C type of an element as the type that C++ has for it.
template <class T> struct cpp_type { using type = T; };
template <> struct cpp_type<Complex32f> { using type = std::complex<float>; };
template <> struct cpp_type<Complex64f> { using type = std::complex<double>; };
template <class T> using cpp_type_t = typename cpp_type<std::remove_cv_t<T>>::type;

// Each family of functions: function<Level>(of<T>) is the C function for elements of type T.
template <class T> struct of {};

template <accuracy Level, class Function> constexpr Function* at(Function* full, Function* high, Function* low) {
  return Level == accuracy::full ? full : Level == accuracy::high ? high : low;
}

#define KELVM_FUNCTION_(T, full, high, low)                                                                            \
  template <accuracy Level> static constexpr auto function(of<T>) { return at<Level>(full, high, low); }
#define KELVM_THREE_(T, name, full, high, low) KELVM_FUNCTION_(T, name##full, name##high, name##low)
#define KELVM_ONE_(T, name) KELVM_FUNCTION_(T, name, name, name)
#define KELVM_REAL_(family)                                                                                            \
  KELVM_THREE_(float, kels##family##_32f_, A24, A21, A11)                                                              \
  KELVM_THREE_(double, kels##family##_64f_, A53, A50, A26)
#define KELVM_COMPLEX_(family)                                                                                         \
  KELVM_THREE_(std::complex<float>, kels##family##_32fc_, A24, A21, A11)                                               \
  KELVM_THREE_(std::complex<double>, kels##family##_64fc_, A53, A50, A26)
#define KELVM_REAL_EXACT_(family) KELVM_ONE_(float, kels##family##_32f_A24) KELVM_ONE_(double, kels##family##_64f_A53)
#define KELVM_COMPLEX_EXACT_(family)                                                                                   \
  KELVM_ONE_(std::complex<float>, kels##family##_32fc_A24) KELVM_ONE_(std::complex<double>, kels##family##_64fc_A53)
#define KELVM_ROUNDING_(family) KELVM_ONE_(float, kels##family##_32f) KELVM_ONE_(double, kels##family##_64f)

// clang-format off
struct Add { KELVM_REAL_EXACT_(Add) KELVM_COMPLEX_EXACT_(Add) };
struct Sub { KELVM_REAL_EXACT_(Sub) KELVM_COMPLEX_EXACT_(Sub) };
struct Mul { KELVM_REAL_EXACT_(Mul) KELVM_COMPLEX_(Mul) };
struct Sqr { KELVM_REAL_EXACT_(Sqr) };
struct Abs { KELVM_REAL_EXACT_(Abs) KELVM_COMPLEX_(Abs) };
struct Div { KELVM_REAL_(Div) KELVM_COMPLEX_(Div) };
struct Inv { KELVM_REAL_(Inv) };
struct Conj { KELVM_COMPLEX_EXACT_(Conj) };
struct MulByConj { KELVM_COMPLEX_(MulByConj) };
struct Ceil { KELVM_ROUNDING_(Ceil) };
struct Floor { KELVM_ROUNDING_(Floor) };
struct Trunc { KELVM_ROUNDING_(Trunc) };
struct Round { KELVM_ROUNDING_(Round) };
struct Rint { KELVM_ROUNDING_(Rint) };
struct NearbyInt { KELVM_ROUNDING_(NearbyInt) };
struct Modf { KELVM_ROUNDING_(Modf) };
struct Sqrt { KELVM_REAL_(Sqrt) KELVM_COMPLEX_(Sqrt) };
struct InvSqrt { KELVM_REAL_(InvSqrt) };
struct Cbrt { KELVM_REAL_(Cbrt) };
struct InvCbrt { KELVM_REAL_(InvCbrt) };
struct Pow2o3 { KELVM_REAL_(Pow2o3) };
struct Pow3o2 { KELVM_REAL_(Pow3o2) };
struct Hypot { KELVM_REAL_(Hypot) };
struct Exp { KELVM_REAL_(Exp) KELVM_COMPLEX_(Exp) };
struct Expm1 { KELVM_REAL_(Expm1) };
struct Ln { KELVM_REAL_(Ln) KELVM_COMPLEX_(Ln) };
struct Log10 { KELVM_REAL_(Log10) KELVM_COMPLEX_(Log10) };
struct Log1p { KELVM_REAL_(Log1p) };
struct Pow { KELVM_REAL_(Pow) KELVM_COMPLEX_(Pow) };
struct Powx { KELVM_REAL_(Powx) KELVM_COMPLEX_(Powx) };
struct Sin { KELVM_REAL_(Sin) KELVM_COMPLEX_(Sin) };
struct Cos { KELVM_REAL_(Cos) KELVM_COMPLEX_(Cos) };
struct SinCos { KELVM_REAL_(SinCos) };
struct CIS {
  KELVM_THREE_(float, kelsCIS_32fc_, A24, A21, A11)
  KELVM_THREE_(double, kelsCIS_64fc_, A53, A50, A26)
};
struct Tan { KELVM_REAL_(Tan) KELVM_COMPLEX_(Tan) };
struct Atan { KELVM_REAL_(Atan) KELVM_COMPLEX_(Atan) };
struct Atan2 { KELVM_REAL_(Atan2) };
struct Asin { KELVM_REAL_(Asin) KELVM_COMPLEX_(Asin) };
struct Acos { KELVM_REAL_(Acos) KELVM_COMPLEX_(Acos) };
struct Sinh { KELVM_REAL_(Sinh) KELVM_COMPLEX_(Sinh) };
struct Cosh { KELVM_REAL_(Cosh) KELVM_COMPLEX_(Cosh) };
struct Tanh { KELVM_REAL_(Tanh) KELVM_COMPLEX_(Tanh) };
struct Asinh { KELVM_REAL_(Asinh) KELVM_COMPLEX_(Asinh) };
struct Acosh { KELVM_REAL_(Acosh) KELVM_COMPLEX_(Acosh) };
struct Atanh { KELVM_REAL_(Atanh) KELVM_COMPLEX_(Atanh) };
struct Erf { KELVM_REAL_(Erf) };
struct Erfc { KELVM_REAL_(Erfc) };
struct ErfInv { KELVM_REAL_(ErfInv) };
struct ErfcInv { KELVM_REAL_(ErfcInv) };
struct CdfNorm { KELVM_REAL_(CdfNorm) };
struct CdfNormInv { KELVM_REAL_(CdfNormInv) };
// clang-format on

#undef KELVM_FUNCTION_
#undef KELVM_THREE_
#undef KELVM_ONE_
#undef KELVM_REAL_
#undef KELVM_COMPLEX_
#undef KELVM_REAL_EXACT_
#undef KELVM_COMPLEX_EXACT_
#undef KELVM_ROUNDING_

template <class Family, class T>
concept defined_for = requires {
  Family::template function<accuracy::full>(of<T>());
};

// An argument as the C function takes it: a pointer to the elements of a range, or the one exponent of all elements.
template <class Parameter, class Argument> Parameter as_c_argument(Argument&& argument) {
  if constexpr (std::is_pointer_v<Parameter>) {
    return reinterpret_cast<Parameter>(std::span(argument).data());
  } else if constexpr (std::is_floating_point_v<Parameter>) {
    return static_cast<Parameter>(argument);
  } else {
    const cpp_type_t<Parameter> number(argument);
    return {number.real(), number.imag()};
  }
}

template <class Argument> bool has_size(std::size_t size, const Argument& argument) {
  if constexpr (range<const Argument&>)
    return std::span(argument).size() == size;
  else
    return true;
}

[[gnu::noinline, gnu::cold]] inline status sizes_differ() {
#if defined(__cpp_exceptions)
  throw std::invalid_argument("kelvm: the ranges of a call differ in size");
#else
  return status::size_error;
#endif
}

// An array argument, or an exponent, of the elements from the given one on.
template <class T> T* from(std::size_t first, T* array) { return array + first; }
template <class T> T from(std::size_t, T exponent) { return exponent; }

// Calls the C function: one call, as far as an int can count. Of several the last warning is the warning of them all.
struct InOrder {
  template <class Function, class... Arguments>
  status operator()(Function* function, std::size_t size, Arguments... arguments) const {
    if (size - 1 < INT_MAX) [[likely]]
      return static_cast<status>(function(arguments..., static_cast<int>(size)));
    return in_pieces(function, size, arguments...);
  }

private:
  template <class Function, class... Arguments>
  [[gnu::noinline, gnu::cold]] static status in_pieces(Function* function, std::size_t size, Arguments... arguments) {
    constexpr std::size_t piece = std::size_t{1} << 30; // aligned elements stay aligned
    kelStatus last = kelStatusOk;
    for (std::size_t first = 0; first < size && last >= 0; first += piece) {
      const std::size_t count = size - first < piece ? size - first : piece;
      const kelStatus found = function(from(first, arguments)..., static_cast<int>(count));
      if (found != kelStatusOk) last = found;
    }
    return static_cast<status>(last);
  }
};

// Whether an argument serves for a parameter of the C function: as a range of its elements, or as an exponent.
template <class Parameter, class Argument>
constexpr bool serves = !std::is_pointer_v<Parameter> && std::is_convertible_v<Argument, cpp_type_t<Parameter>>;
template <class C, range Argument>
constexpr bool serves<const C*, Argument> = std::same_as<std::remove_cv_t<element_of<Argument>>, cpp_type_t<C>>;
template <class C, range Argument>
requires(!std::is_const_v<C>) constexpr bool serves<C*, Argument> = std::same_as<element_of<Argument>, cpp_type_t<C>>;

// Wrong use is told in a sentence each, by an assertion that fails.
template <class R> constexpr void explain_input() {
  static_assert(range<R>, "kelvm: an input is a contiguous range with a size, such as a vector, an array or a span");
}

template <class Parameter, class Argument> constexpr void explain() {
  constexpr bool is_input = std::is_const_v<std::remove_pointer_t<Parameter>>;
  if constexpr (!std::is_pointer_v<Parameter>)
    static_assert(serves<Parameter, Argument>,
                  "kelvm: an exponent is a range, or one number that converts to the type of the elements");
  else if constexpr (is_input && !range<Argument>)
    explain_input<Argument>();
  else if constexpr (!range<Argument>)
    static_assert(range<Argument>, "kelvm: an output is a contiguous range with a size that outlives the call, such as "
                                   "a vector, an array or a span");
  else if constexpr (!is_input && std::is_const_v<element_of<Argument>>)
    static_assert(is_input, "kelvm: the elements of an output must not be const");
  else
    static_assert(serves<Parameter, Argument>,
                  "kelvm: the ranges of a call have elements of the same type (only abs of "
                  "complex numbers gives reals, and cis of reals complex numbers)");
}

// Checks the arguments against the parameters of the C function, when compiled, and their sizes, and calls it.
template <class First, class... Parameters, class Executor, class Function, class X, class... Others>
status check_and_call(const Executor& executor, Function* function, const X& x, Others&&... others) {
  (explain<Parameters, Others>(), ...);
  if constexpr ((serves<Parameters, Others> && ...)) {
    const std::size_t size = std::span(x).size();
    if (!(has_size(size, others) && ...)) return sizes_differ();
    return executor(function, size, as_c_argument<First>(x), as_c_argument<Parameters>(others)...);
  }
  return status::ok;
}

template <class Executor, class A, class B, class... Arguments>
status call(const Executor& executor, kelStatus (*function)(A, B, int), Arguments&&... arguments) {
  return check_and_call<A, B>(executor, function, std::forward<Arguments>(arguments)...);
}

template <class Executor, class A, class B, class C, class... Arguments>
status call(const Executor& executor, kelStatus (*function)(A, B, C, int), Arguments&&... arguments) {
  return check_and_call<A, B, C>(executor, function, std::forward<Arguments>(arguments)...);
}

// The function of a family that the elements of x ask for.
template <class Family, accuracy Level, class Executor, class X, class... Others>
status apply(const Executor& executor, const X& x, Others&&... others) {
  explain_input<const X&>();
  if constexpr (range<const X&>) {
    using T = std::remove_cv_t<element_of<const X&>>;
    static_assert(element<T>, "kelvm: the elements of a range are float, double, std::complex<float> or "
                              "std::complex<double>");
    if constexpr (element<T>) {
      static_assert(defined_for<Family, T> || !std::floating_point<T>,
                    "kelvm: this function takes complex numbers only");
      static_assert(defined_for<Family, T> || std::floating_point<T>, "kelvm: this function takes real numbers only");
      if constexpr (defined_for<Family, T>)
        return call(executor, Family::template function<Level>(of<T>()), x, std::forward<Others>(others)...);
    }
  }
  return status::ok;
}

// An exponent that is a range has a family of its own.
template <class Exponent> using PowerBy = std::conditional_t<range<const Exponent&>, Pow, Powx>;

} // namespace detail

// Arithmetic

/// y[i] = x1[i] + x2[i], real or complex: one IEEE operation a part, in the caller's rounding mode.
///
/// - No warnings. Exact at every accuracy level.
/// @code
/// std::vector<double> a{1, 2, 3}, b{10, 20, 30}, y(3);
/// kelvm::add(a, b, y); // 11, 22, 33
/// @endcode
template <accuracy Level = accuracy::full, class X1, class X2, class Y> status add(const X1& x1, const X2& x2, Y&& y) {
  return detail::apply<detail::Add, Level>(detail::InOrder(), x1, x2, std::forward<Y>(y));
}

/// y[i] = x1[i] - x2[i], real or complex: one IEEE operation a part, in the caller's rounding mode.
///
/// - No warnings. Exact at every accuracy level.
/// @code
/// std::vector<double> a{10, 20, 30}, b{1, 2, 3}, y(3);
/// kelvm::sub(a, b, y); // 9, 18, 27
/// @endcode
template <accuracy Level = accuracy::full, class X1, class X2, class Y> status sub(const X1& x1, const X2& x2, Y&& y) {
  return detail::apply<detail::Sub, Level>(detail::InOrder(), x1, x2, std::forward<Y>(y));
}

/// y[i] = x1[i] * x2[i], real or complex.
///
/// - Real: one IEEE operation in the caller's rounding mode, at every accuracy level; no warnings.
/// - Complex: infinities and NaNs as in Annex G of ISO C. Warnings: overflow where finite numbers give an infinite
///   part; domain where numbers without a NaN give a NaN part (infinity times zero). Accuracy: full within 1 ulp a
///   part; high and low as in `accuracy`, relative to the absolute value of the result.
/// @code
/// std::vector<std::complex<double>> a{{0, 1}}, b{{0, 1}}, y(1);
/// kelvm::mul(a, b, y); // -1
/// @endcode
template <accuracy Level = accuracy::full, class X1, class X2, class Y> status mul(const X1& x1, const X2& x2, Y&& y) {
  return detail::apply<detail::Mul, Level>(detail::InOrder(), x1, x2, std::forward<Y>(y));
}

/// y[i] = x[i] * x[i] for real x: one IEEE operation in the caller's rounding mode.
///
/// - No warnings. Exact at every accuracy level.
/// @code
/// std::vector<double> x{1, -2, 3}, y(3);
/// kelvm::sqr(x, y); // 1, 4, 9
/// @endcode
template <accuracy Level = accuracy::full, class X, class Y> status sqr(const X& x, Y&& y) {
  return detail::apply<detail::Sqr, Level>(detail::InOrder(), x, std::forward<Y>(y));
}

/// y[i] = |x[i]|: real x gives its magnitude, complex x gives reals.
///
/// - Real: in the caller's mode, at every accuracy level; no warnings.
/// - Complex: infinite where a part is, whatever the other; nothing overflows on the way. Warnings: overflow; underflow
///   where the result is below the normal range and not zero. Accuracy: full within 1 ulp (floats correctly rounded),
///   high and low as in `accuracy`.
/// @code
/// std::vector<std::complex<double>> z{{3, 4}, {0, -2}};
/// std::vector<double> y(2);
/// kelvm::abs(z, y); // 5, 2
/// @endcode
template <accuracy Level = accuracy::full, class X, class Y> status abs(const X& x, Y&& y) {
  return detail::apply<detail::Abs, Level>(detail::InOrder(), x, std::forward<Y>(y));
}

/// y[i] = x1[i] / x2[i], real or complex.
///
/// - Real: warnings: pole for x / 0 (x finite and not zero), domain for 0 / 0 and infinity / infinity, overflow,
///   underflow for a quotient below the normal range.
/// - Complex: infinities and NaNs as in Annex G of ISO C. Warnings: overflow where finite numbers give an infinite
///   part; domain where numbers without a NaN give a NaN part; pole where a number other than zero is divided by zero.
/// - Accuracy: full the IEEE quotient (complex: within 1 ulp a part), high and low as in `accuracy`, for complex
///   numbers relative to the absolute value of the result.
/// @code
/// std::vector<double> a{1, 2, 3}, b{4, 4, 0}, y(3);
/// kelvm::div(a, b, y); // 0.25, 0.5, inf: status::pole
/// @endcode
template <accuracy Level = accuracy::full, class X1, class X2, class Y> status div(const X1& x1, const X2& x2, Y&& y) {
  return detail::apply<detail::Div, Level>(detail::InOrder(), x1, x2, std::forward<Y>(y));
}

/// y[i] = 1 / x[i] for real x; an infinity gives a zero of its sign.
///
/// - Warnings: pole for a zero (infinity of its sign); overflow and underflow for a reciprocal beyond and below the
///   normal range.
/// - Accuracy: full correctly rounded, high and low as in `accuracy`.
/// @code
/// std::vector<double> x{2, -4}, y(2);
/// kelvm::inv(x, y); // 0.5, -0.25
/// @endcode
template <accuracy Level = accuracy::full, class X, class Y> status inv(const X& x, Y&& y) {
  return detail::apply<detail::Inv, Level>(detail::InOrder(), x, std::forward<Y>(y));
}

/// y[i] = the conjugate of complex x[i]: the sign bit of the imaginary part is turned, of zeros and NaNs too.
///
/// - No warnings. Exact at every accuracy level.
/// @code
/// std::vector<std::complex<double>> x{{1, 2}}, y(1);
/// kelvm::conj(x, y); // 1 - 2i
/// @endcode
template <accuracy Level = accuracy::full, class X, class Y> status conj(const X& x, Y&& y) {
  return detail::apply<detail::Conj, Level>(detail::InOrder(), x, std::forward<Y>(y));
}

/// y[i] = x1[i] * the conjugate of x2[i], complex.
///
/// - Infinities, NaNs, warnings and accuracy as for the complex product, mul().
/// @code
/// std::vector<std::complex<double>> a{{1, 2}}, y(1);
/// kelvm::mul_by_conj(a, a, y); // 5: the squared magnitude
/// @endcode
template <accuracy Level = accuracy::full, class X1, class X2, class Y>
status mul_by_conj(const X1& x1, const X2& x2, Y&& y) {
  return detail::apply<detail::MulByConj, Level>(detail::InOrder(), x1, x2, std::forward<Y>(y));
}

// Rounding to integral values, kept in the type. Exact; zeros and infinities are kept, signs included, where nothing
// else is said. No warnings.

/// y[i] = x[i] rounded up, toward plus infinity. Real x of any value.
///
/// - Raises inexact for a value that is not integral.
/// - No warnings. Exact at every accuracy level.
/// @code
/// std::vector<double> x{-1.5, 0.5, 2.5}, y(3);
/// kelvm::ceil(x, y); // -1, 1, 3
/// @endcode
template <accuracy Level = accuracy::full, class X, class Y> status ceil(const X& x, Y&& y) {
  return detail::apply<detail::Ceil, Level>(detail::InOrder(), x, std::forward<Y>(y));
}

/// y[i] = x[i] rounded down, toward minus infinity. Real x of any value.
///
/// - Raises inexact for a value that is not integral.
/// - No warnings. Exact at every accuracy level.
/// @code
/// std::vector<double> x{-1.5, 0.5, 2.5}, y(3);
/// kelvm::floor(x, y); // -2, 0, 2
/// @endcode
template <accuracy Level = accuracy::full, class X, class Y> status floor(const X& x, Y&& y) {
  return detail::apply<detail::Floor, Level>(detail::InOrder(), x, std::forward<Y>(y));
}

/// y[i] = x[i] rounded toward zero. Real x of any value.
///
/// - Raises inexact for a value that is not integral.
/// - No warnings. Exact at every accuracy level.
/// @code
/// std::vector<double> x{-1.5, 0.5, 2.5}, y(3);
/// kelvm::trunc(x, y); // -1, 0, 2
/// @endcode
template <accuracy Level = accuracy::full, class X, class Y> status trunc(const X& x, Y&& y) {
  return detail::apply<detail::Trunc, Level>(detail::InOrder(), x, std::forward<Y>(y));
}

/// y[i] = x[i] rounded to the nearest integer, halfway cases away from zero. Real x of any value.
///
/// - Every zero result is +0; an infinity raises invalid.
/// - No warnings. Exact at every accuracy level.
/// @code
/// std::vector<double> x{-1.5, 0.5, 2.5}, y(3);
/// kelvm::round(x, y); // -2, 1, 3
/// @endcode
template <accuracy Level = accuracy::full, class X, class Y> status round(const X& x, Y&& y) {
  return detail::apply<detail::Round, Level>(detail::InOrder(), x, std::forward<Y>(y));
}

/// y[i] = x[i] rounded in the caller's rounding mode: as a rule to nearest, halfway cases to even. Real x of any value.
///
/// - Raises inexact for a value that is not integral.
/// - No warnings. Exact at every accuracy level.
/// @code
/// std::vector<double> x{-1.5, 0.5, 2.5}, y(3);
/// kelvm::rint(x, y); // -2, 0, 2
/// @endcode
template <accuracy Level = accuracy::full, class X, class Y> status rint(const X& x, Y&& y) {
  return detail::apply<detail::Rint, Level>(detail::InOrder(), x, std::forward<Y>(y));
}

/// y[i] = x[i] rounded in the caller's rounding mode, as rint() does. Real x of any value.
///
/// - Does not raise inexact.
/// - No warnings. Exact at every accuracy level.
/// @code
/// std::vector<double> x{-1.5, 0.5, 2.5}, y(3);
/// kelvm::nearbyint(x, y); // -2, 0, 2
/// @endcode
template <accuracy Level = accuracy::full, class X, class Y> status nearbyint(const X& x, Y&& y) {
  return detail::apply<detail::NearbyInt, Level>(detail::InOrder(), x, std::forward<Y>(y));
}

/// integral[i] + fraction[i] = x[i]: the part before and the part after the point, both with the sign of x[i].
///
/// - Real x of any value; an infinity has a zero as fraction, a NaN gives a NaN in both. Either output may be x, the
///   two should not overlap.
/// - No warnings. Exact at every accuracy level.
/// @code
/// std::vector<double> x{-1.25, 3.5}, integral(2), fraction(2);
/// kelvm::modf(x, integral, fraction); // -1, 3 and -0.25, 0.5
/// @endcode
template <accuracy Level = accuracy::full, class X, class I, class F>
status modf(const X& x, I&& integral, F&& fraction) {
  return detail::apply<detail::Modf, Level>(detail::InOrder(), x, std::forward<I>(integral), std::forward<F>(fraction));
}

// Roots and algebraic powers

/// y[i] = the square root of x[i], real or complex.
///
/// - Real: a zero keeps its sign. Warning: domain for a negative number. Accuracy: full correctly rounded, high and low
///   as in `accuracy`.
/// - Complex: the principal root: its real part is not negative, its imaginary part has the sign of x[i]'s, that of a
///   zero too. Infinities and NaNs as in Annex G of ISO C. No warnings. Accuracy: full within 1 ulp a part, high and
///   low as in `accuracy`, relative to the absolute value of the result.
/// @code
/// std::vector<std::complex<double>> x{{-4, 0.0}, {-4, -0.0}}, y(2);
/// kelvm::sqrt(x, y); // 2i, -2i
/// @endcode
template <accuracy Level = accuracy::full, class X, class Y> status sqrt(const X& x, Y&& y) {
  return detail::apply<detail::Sqrt, Level>(detail::InOrder(), x, std::forward<Y>(y));
}

/// y[i] = 1 / the square root of x[i], for real x[i] >= 0; +infinity gives +0.
///
/// - Warnings: pole for a zero (infinity of its sign), domain for a negative number.
/// - Accuracy: full within 1 ulp (floats correctly rounded), high and low as in `accuracy`.
/// @code
/// std::vector<double> x{4, 0.25}, y(2);
/// kelvm::rsqrt(x, y); // 0.5, 2
/// @endcode
template <accuracy Level = accuracy::full, class X, class Y> status rsqrt(const X& x, Y&& y) {
  return detail::apply<detail::InvSqrt, Level>(detail::InOrder(), x, std::forward<Y>(y));
}

/// y[i] = the cube root of x[i], for every real number; odd, zeros and infinities are kept.
///
/// - No warnings.
/// - Accuracy: full within 1 ulp (floats correctly rounded), high and low as in `accuracy`.
/// @code
/// std::vector<double> x{27, -8}, y(2);
/// kelvm::cbrt(x, y); // 3, -2
/// @endcode
template <accuracy Level = accuracy::full, class X, class Y> status cbrt(const X& x, Y&& y) {
  return detail::apply<detail::Cbrt, Level>(detail::InOrder(), x, std::forward<Y>(y));
}

/// y[i] = 1 / the cube root of x[i], for every real number; odd, an infinity gives a zero of its sign.
///
/// - Warning: pole for a zero (infinity of its sign).
/// - Accuracy: full within 1 ulp (floats correctly rounded), high and low as in `accuracy`.
/// @code
/// std::vector<double> x{8, -0.125}, y(2);
/// kelvm::rcbrt(x, y); // 0.5, -2
/// @endcode
template <accuracy Level = accuracy::full, class X, class Y> status rcbrt(const X& x, Y&& y) {
  return detail::apply<detail::InvCbrt, Level>(detail::InOrder(), x, std::forward<Y>(y));
}

/// y[i] = x[i]^(2/3), the square of the cube root, for every real number; even, a zero gives +0, an infinity +infinity.
///
/// - No warnings.
/// - Accuracy: full within 1 ulp (floats correctly rounded), high and low as in `accuracy`.
/// @code
/// std::vector<double> x{8, -27}, y(2);
/// kelvm::pow2o3(x, y); // 4, 9
/// @endcode
template <accuracy Level = accuracy::full, class X, class Y> status pow2o3(const X& x, Y&& y) {
  return detail::apply<detail::Pow2o3, Level>(detail::InOrder(), x, std::forward<Y>(y));
}

/// y[i] = x[i]^(3/2), the cube of the square root, for real x[i] >= 0; a zero gives +0, +infinity itself.
///
/// - Warnings: domain for a negative number, overflow, underflow.
/// - Accuracy: full within 1 ulp (floats correctly rounded), high and low as in `accuracy`.
/// @code
/// std::vector<double> x{4, 9}, y(2);
/// kelvm::pow3o2(x, y); // 8, 27
/// @endcode
template <accuracy Level = accuracy::full, class X, class Y> status pow3o2(const X& x, Y&& y) {
  return detail::apply<detail::Pow3o2, Level>(detail::InOrder(), x, std::forward<Y>(y));
}

/// y[i] = the square root of (x1[i]^2 + x2[i]^2), for all real numbers; no square overflows or underflows on the way.
///
/// - An infinity gives +infinity, beside a NaN as well.
/// - Warnings: overflow; underflow where the result is below the normal range and not zero.
/// - Accuracy: full within 1 ulp (floats correctly rounded), high and low as in `accuracy`.
/// @code
/// std::vector<double> a{3, 3e300}, b{4, 4e300}, y(2);
/// kelvm::hypot(a, b, y); // 5, 5e300
/// @endcode
template <accuracy Level = accuracy::full, class X1, class X2, class Y>
status hypot(const X1& x1, const X2& x2, Y&& y) {
  return detail::apply<detail::Hypot, Level>(detail::InOrder(), x1, x2, std::forward<Y>(y));
}

// Exponential, logarithm and power

/// y[i] = e^x[i], for all real and complex numbers.
///
/// - Real: +infinity gives itself, -infinity +0. Warnings: overflow, underflow where the result is below the normal
///   range.
/// - Complex: e^a (cos b + i sin b); infinities and NaNs as in Annex G of ISO C. Warnings: overflow where a finite
///   number gives an infinite part; domain for an infinite angle that gives a NaN part.
/// - Accuracy: full within 1 ulp a part; high and low as in `accuracy`, for complex numbers relative to the absolute
///   value of the result. At low, doubles between 709.7773 and 709.7827 give infinities without a warning: their exact
///   results are just below the largest number.
/// @code
/// std::vector<double> x{0, 1, 1000}, y(3);
/// kelvm::exp(x, y); // 1, 2.718281828459045, inf: status::overflow
/// @endcode
template <accuracy Level = accuracy::full, class X, class Y> status exp(const X& x, Y&& y) {
  return detail::apply<detail::Exp, Level>(detail::InOrder(), x, std::forward<Y>(y));
}

/// y[i] = e^x[i] - 1, for every real number, accurate near 0 too; zeros and +infinity are kept, -infinity gives -1.
///
/// - Warning: overflow.
/// - Accuracy: full within 1 ulp (floats correctly rounded), high and low as in `accuracy`.
/// @code
/// std::vector<double> rate{1e-10}, interest(1);
/// kelvm::expm1(rate, interest); // 1.00000000005e-10
/// @endcode
template <accuracy Level = accuracy::full, class X, class Y> status expm1(const X& x, Y&& y) {
  return detail::apply<detail::Expm1, Level>(detail::InOrder(), x, std::forward<Y>(y));
}

/// y[i] = the natural logarithm of x[i], for real x[i] >= 0 or complex x[i]; exact at 1.
///
/// - Real: warnings: pole for a zero (-infinity), domain for a negative number. Accuracy: full within 1 ulp (floats
///   correctly rounded), high and low as in `accuracy`.
/// - Complex: ln |x| + i angle, the angle in [-pi, pi] with the sign of the imaginary part, that of a zero too.
///   Infinities and NaNs as in Annex G of ISO C. Warning: pole for a zero. Accuracy: full within 1 ulp a part, next to
///   the unit circle too; high and low as in `accuracy`, relative to the absolute value of the result.
/// @code
/// std::vector<double> x{1, 10, 0}, y(3);
/// kelvm::log(x, y); // 0, 2.302585092994046, -inf: status::pole
/// @endcode
template <accuracy Level = accuracy::full, class X, class Y> status log(const X& x, Y&& y) {
  return detail::apply<detail::Ln, Level>(detail::InOrder(), x, std::forward<Y>(y));
}

/// y[i] = the decimal logarithm of x[i], for real x[i] >= 0 or complex x[i].
///
/// - Everything else as for log(). At full accuracy powers of ten give the exact integer.
/// @code
/// std::vector<double> x{1000, 0.5}, y(2);
/// kelvm::log10(x, y); // 3, -0.3010299956639812
/// @endcode
template <accuracy Level = accuracy::full, class X, class Y> status log10(const X& x, Y&& y) {
  return detail::apply<detail::Log10, Level>(detail::InOrder(), x, std::forward<Y>(y));
}

/// y[i] = ln(1 + x[i]), for real x[i] >= -1, accurate near 0 too; zeros and +infinity are kept.
///
/// - Warnings: pole at -1 (-infinity), domain below.
/// - Accuracy: full within 1 ulp (floats correctly rounded), high and low as in `accuracy`.
/// @code
/// std::vector<double> growth{1e-10}, rate(1);
/// kelvm::log1p(growth, rate); // 9.9999999995e-11
/// @endcode
template <accuracy Level = accuracy::full, class X, class Y> status log1p(const X& x, Y&& y) {
  return detail::apply<detail::Log1p, Level>(detail::InOrder(), x, std::forward<Y>(y));
}

/// y[i] = x[i]^exponent[i], or x[i]^exponent where the exponent is one number; real or complex.
///
/// - One number as exponent is converted to the type of the elements, and gives the same bits as a range that is full
///   of it.
/// - Real: as in Annex F of ISO C: a zero exponent and a base of 1 give 1, also with a NaN; a negative base has powers
///   with integer exponents only. Powers that are numbers of the type are exact at full accuracy. Warnings: pole for a
///   zero base and a finite negative exponent, domain for a negative finite base and a finite exponent that is no
///   integer, overflow, underflow. Accuracy: full within 1 ulp, high and low as in `accuracy`.
/// - Complex: e^(w ln z) with the principal logarithm. Warnings: pole for a zero base and a negative real exponent;
///   overflow where finite numbers give an infinite part; domain where numbers without a NaN give NaN parts. Accuracy:
///   full within 1 ulp a part, high and low as in `accuracy`, relative to the absolute value of the result. That holds
///   for any w; numbers with |w ln z| above 2^34 take long.
/// @code
/// std::vector<double> x{4, 9}, e{0.5, 2}, y(2);
/// kelvm::pow(x, e, y);   // 2, 81
/// kelvm::pow(x, 1.5, y); // 8, 27
/// @endcode
template <accuracy Level = accuracy::full, class X, class E, class Y> status pow(const X& x, const E& exponent, Y&& y) {
  return detail::apply<detail::PowerBy<E>, Level>(detail::InOrder(), x, exponent, std::forward<Y>(y));
}

// Circular functions. Angles are radians, and reduced accurately however large they are.

/// y[i] = the sine of x[i], for all finite real and complex numbers.
///
/// - Real: odd, zeros are kept. Warning: domain for an infinity, and for a NaN of type double whose upper 32 bits are
///   those of an infinity. Accuracy: full within 1 ulp, high as in `accuracy`; low so everywhere but next to the
///   multiples of pi other than 0, where its absolute error stays below 3e-11 (floats 1.6e-4).
/// - Complex: infinities and NaNs as in Annex G of ISO C. Warnings: overflow where a finite number gives an infinite
///   part; domain for an infinite angle that gives a NaN part. Accuracy: full within 1 ulp a part, high and low as in
///   `accuracy`, relative to the absolute value of the result.
/// @code
/// std::vector<double> x{0, 0.5, 1e22}, y(3);
/// kelvm::sin(x, y); // 0, 0.479425538604203, -0.8522008497671888
/// @endcode
template <accuracy Level = accuracy::full, class X, class Y> status sin(const X& x, Y&& y) {
  return detail::apply<detail::Sin, Level>(detail::InOrder(), x, std::forward<Y>(y));
}

/// y[i] = the cosine of x[i], for all finite real and complex numbers.
///
/// - Real: even. Warning: domain as for sin(). Accuracy: full within 1 ulp, high as in `accuracy`; low so for floats,
///   and for doubles everywhere but next to the zeros, where its absolute error stays below 3e-11.
/// - Complex: warnings and accuracy as for sin().
/// @code
/// std::vector<double> x{0, 0.5, 1e22}, y(3);
/// kelvm::cos(x, y); // 1, 0.8775825618903728, 0.5232147853951389
/// @endcode
template <accuracy Level = accuracy::full, class X, class Y> status cos(const X& x, Y&& y) {
  return detail::apply<detail::Cos, Level>(detail::InOrder(), x, std::forward<Y>(y));
}

/// sines[i] and cosines[i] of real x[i], computed together: the bits of sin() and cos() at the same accuracy.
///
/// - Domain, warnings and accuracy as for those. Either output may be x, the two should not overlap.
/// @code
/// std::vector<float> angle{0.5f}, s(1), c(1);
/// kelvm::sincos(angle, s, c); // 0.47942555f and 0.87758255f
/// @endcode
template <accuracy Level = accuracy::full, class X, class S, class C>
status sincos(const X& x, S&& sines, C&& cosines) {
  return detail::apply<detail::SinCos, Level>(detail::InOrder(), x, std::forward<S>(sines), std::forward<C>(cosines));
}

/// y[i] = cos x[i] + i sin x[i], of real x and complex y: points of the unit circle, phasors.
///
/// - The bits of sincos(), with its domain and accuracy.
/// - Warning: domain for an infinity. The ranges must not overlap.
/// @code
/// std::vector<double> angle{0, 0.5};
/// std::vector<std::complex<double>> y(2);
/// kelvm::cis(angle, y); // 1, 0.8775825618903728 + 0.479425538604203i
/// @endcode
template <accuracy Level = accuracy::full, class X, class Y> status cis(const X& x, Y&& y) {
  return detail::apply<detail::CIS, Level>(detail::InOrder(), x, std::forward<Y>(y));
}

/// y[i] = the tangent of x[i], for all finite real and complex numbers.
///
/// - Real: odd, zeros are kept; never overflows: no number is close enough to a pole. Warning: domain for an infinity.
///   Accuracy: full within 1 ulp (floats correctly rounded), high and low as in `accuracy`, next to zeros and poles
///   too.
/// - Complex: infinities and NaNs as in Annex G of ISO C. Warning: domain for an infinite angle that gives a NaN part.
///   Accuracy: full within 1 ulp a part, high and low as in `accuracy`, relative to the absolute value of the result.
/// @code
/// std::vector<double> x{0, 0.5}, y(2);
/// kelvm::tan(x, y); // 0, 0.5463024898437905
/// @endcode
template <accuracy Level = accuracy::full, class X, class Y> status tan(const X& x, Y&& y) {
  return detail::apply<detail::Tan, Level>(detail::InOrder(), x, std::forward<Y>(y));
}

/// y[i] = the inverse tangent of x[i], from -pi/2 to pi/2, for all real and complex numbers.
///
/// - Real: odd, zeros are kept, infinities give +-pi/2. No warnings. Accuracy: full within 1 ulp (floats correctly
///   rounded), high and low as in `accuracy`.
/// - Complex: cuts along the imaginary axis beyond -i and i, the sign of a zero real part telling the sides apart.
///   Warning: pole at -i and i. Accuracy: full within 1 ulp a part, high and low as in `accuracy`, relative to the
///   absolute value of the result.
/// @code
/// std::vector<double> x{1, -1e300}, y(2);
/// kelvm::atan(x, y); // 0.7853981633974483, -1.5707963267948966
/// @endcode
template <accuracy Level = accuracy::full, class X, class Y> status atan(const X& x, Y&& y) {
  return detail::apply<detail::Atan, Level>(detail::InOrder(), x, std::forward<Y>(y));
}

/// result[i] = the angle of the point (x[i], y[i]), y first, from -pi to pi, for all real numbers.
///
/// - Zeros and infinities as in Annex F of ISO C; no point is a domain error or a pole.
/// - Warning: underflow where the result is below the normal range and y[i] is not 0.
/// - Accuracy: full within 1 ulp, high and low as in `accuracy`.
/// @code
/// std::vector<double> y{1, 0.0, -0.0}, x{1, -1, -1}, result(3);
/// kelvm::atan2(y, x, result); // 0.7853981633974483, 3.141592653589793, -3.141592653589793
/// @endcode
template <accuracy Level = accuracy::full, class Y, class X, class R> status atan2(const Y& y, const X& x, R&& result) {
  return detail::apply<detail::Atan2, Level>(detail::InOrder(), y, x, std::forward<R>(result));
}

/// y[i] = the inverse sine of x[i], from -pi/2 to pi/2, for real numbers in [-1, 1] and all complex ones.
///
/// - Real: odd, zeros are kept. Warning: domain beyond [-1, 1]. Accuracy: full within 1 ulp (floats correctly rounded),
///   high and low as in `accuracy`.
/// - Complex: cuts along the real axis beyond -1 and 1, the sign of a zero imaginary part telling the sides apart. No
///   warnings. Accuracy: full within 1 ulp a part, also next to the cuts, high and low as in `accuracy`, relative to
///   the absolute value of the result.
/// @code
/// std::vector<double> x{0.5, 1}, y(2);
/// kelvm::asin(x, y); // 0.5235987755982989, 1.5707963267948966
/// @endcode
template <accuracy Level = accuracy::full, class X, class Y> status asin(const X& x, Y&& y) {
  return detail::apply<detail::Asin, Level>(detail::InOrder(), x, std::forward<Y>(y));
}

/// y[i] = the inverse cosine of x[i], from 0 to pi, for real numbers in [-1, 1] and all complex ones.
///
/// - Real: exactly +0 at 1. Warning: domain beyond [-1, 1].
/// - Complex: cuts as for asin(); no warnings.
/// - Accuracy as for asin().
/// @code
/// std::vector<double> x{0.5, -1}, y(2);
/// kelvm::acos(x, y); // 1.0471975511965979, 3.141592653589793
/// @endcode
template <accuracy Level = accuracy::full, class X, class Y> status acos(const X& x, Y&& y) {
  return detail::apply<detail::Acos, Level>(detail::InOrder(), x, std::forward<Y>(y));
}

// Hyperbolic functions

/// y[i] = the hyperbolic sine of x[i], for all real and complex numbers.
///
/// - Real: odd, zeros and infinities are kept. Warning: overflow.
/// - Complex: infinities and NaNs as in Annex G of ISO C. Warnings: overflow where a finite number gives an infinite
///   part; domain for an infinite angle that gives a NaN part.
/// - Accuracy: full within 1 ulp a part (real floats correctly rounded), high and low as in `accuracy`, for complex
///   numbers relative to the absolute value of the result.
/// @code
/// std::vector<double> x{0, 1}, y(2);
/// kelvm::sinh(x, y); // 0, 1.1752011936438014
/// @endcode
template <accuracy Level = accuracy::full, class X, class Y> status sinh(const X& x, Y&& y) {
  return detail::apply<detail::Sinh, Level>(detail::InOrder(), x, std::forward<Y>(y));
}

/// y[i] = the hyperbolic cosine of x[i], for all real and complex numbers.
///
/// - Real: even, never below 1; an infinity gives +infinity. Warning: overflow.
/// - Complex: warnings, and accuracy throughout, as for sinh().
/// @code
/// std::vector<double> x{0, 1}, y(2);
/// kelvm::cosh(x, y); // 1, 1.5430806348152437
/// @endcode
template <accuracy Level = accuracy::full, class X, class Y> status cosh(const X& x, Y&& y) {
  return detail::apply<detail::Cosh, Level>(detail::InOrder(), x, std::forward<Y>(y));
}

/// y[i] = the hyperbolic tangent of x[i], for all real and complex numbers.
///
/// - Real: odd, never beyond +-1; zeros are kept, infinities give +-1. No warnings.
/// - Complex: infinities and NaNs as in Annex G of ISO C. Warning: domain for an infinite angle that gives a NaN part.
/// - Accuracy as for sinh().
/// @code
/// std::vector<double> x{0, 0.5}, y(2);
/// kelvm::tanh(x, y); // 0, 0.46211715726000973
/// @endcode
template <accuracy Level = accuracy::full, class X, class Y> status tanh(const X& x, Y&& y) {
  return detail::apply<detail::Tanh, Level>(detail::InOrder(), x, std::forward<Y>(y));
}

/// y[i] = the inverse hyperbolic sine of x[i], for all real and complex numbers. No warnings.
///
/// - Real: odd, zeros and infinities are kept.
/// - Complex: cuts along the imaginary axis beyond -i and i, the sign of a zero real part telling the sides apart.
/// - Accuracy: full within 1 ulp a part (real floats correctly rounded), high and low as in `accuracy`, for complex
///   numbers relative to the absolute value of the result.
/// @code
/// std::vector<double> x{0, 1}, y(2);
/// kelvm::asinh(x, y); // 0, 0.881373587019543
/// @endcode
template <accuracy Level = accuracy::full, class X, class Y> status asinh(const X& x, Y&& y) {
  return detail::apply<detail::Asinh, Level>(detail::InOrder(), x, std::forward<Y>(y));
}

/// y[i] = the inverse hyperbolic cosine of x[i], for real x[i] >= 1 and all complex numbers.
///
/// - Real: exactly +0 at 1. Warning: domain below 1.
/// - Complex: the real part is not negative; a cut along the real axis below 1, the sign of a zero imaginary part
///   telling the sides apart. No warnings.
/// - Accuracy as for asinh().
/// @code
/// std::vector<double> x{1, 2}, y(2);
/// kelvm::acosh(x, y); // 0, 1.3169578969248168
/// @endcode
template <accuracy Level = accuracy::full, class X, class Y> status acosh(const X& x, Y&& y) {
  return detail::apply<detail::Acosh, Level>(detail::InOrder(), x, std::forward<Y>(y));
}

/// y[i] = the inverse hyperbolic tangent of x[i], for real numbers in [-1, 1] and all complex ones.
///
/// - Real: odd, zeros are kept. Warnings: pole at -1 and 1 (+-infinity), domain beyond.
/// - Complex: cuts along the real axis beyond -1 and 1, the sign of a zero imaginary part telling the sides apart.
///   Warning: pole at -1 and 1.
/// - Accuracy as for asinh().
/// @code
/// std::vector<double> x{0, 0.5}, y(2);
/// kelvm::atanh(x, y); // 0, 0.5493061443340548
/// @endcode
template <accuracy Level = accuracy::full, class X, class Y> status atanh(const X& x, Y&& y) {
  return detail::apply<detail::Atanh, Level>(detail::InOrder(), x, std::forward<Y>(y));
}

// Special functions, of real numbers

/// y[i] = the error function of x[i], 2 / sqrt(pi) times the integral of e^(-t^2) from 0 to x[i], for every real
/// number.
///
/// - Odd, never beyond +-1; zeros are kept, infinities give +-1.
/// - No warnings.
/// - Accuracy: full within 1 ulp (floats correctly rounded), high and low as in `accuracy`.
/// @code
/// std::vector<double> x{0, 0.5}, y(2);
/// kelvm::erf(x, y); // 0, 0.5204998778130465
/// @endcode
template <accuracy Level = accuracy::full, class X, class Y> status erf(const X& x, Y&& y) {
  return detail::apply<detail::Erf, Level>(detail::InOrder(), x, std::forward<Y>(y));
}

/// y[i] = 1 - erf(x[i]), for every real number, with its relative accuracy over the whole tail; -infinity gives 2,
/// +infinity +0.
///
/// - Warning: underflow where a finite number's result is below the normal range.
/// - Accuracy: full within 1 ulp (floats correctly rounded), high and low as in `accuracy`.
/// @code
/// std::vector<double> x{0, 10}, y(2);
/// kelvm::erfc(x, y); // 1, 2.088487583762545e-45
/// @endcode
template <accuracy Level = accuracy::full, class X, class Y> status erfc(const X& x, Y&& y) {
  return detail::apply<detail::Erfc, Level>(detail::InOrder(), x, std::forward<Y>(y));
}

/// y[i] = the inverse of the error function at x[i], for real numbers in [-1, 1]; odd, zeros are kept.
///
/// - Warnings: pole at -1 and 1 (+-infinity), domain beyond.
/// - Accuracy: full within 1 ulp (floats correctly rounded), high and low as in `accuracy`.
/// @code
/// std::vector<double> x{0, 0.5}, y(2);
/// kelvm::erf_inv(x, y); // 0, 0.4769362762044699
/// @endcode
template <accuracy Level = accuracy::full, class X, class Y> status erf_inv(const X& x, Y&& y) {
  return detail::apply<detail::ErfInv, Level>(detail::InOrder(), x, std::forward<Y>(y));
}

/// y[i] = the inverse of erfc at x[i], for real numbers in [0, 2]; exactly +0 at 1.
///
/// - Warnings: pole at 0 (+infinity) and 2 (-infinity), domain beyond.
/// - Accuracy: full within 1 ulp (floats correctly rounded), high and low as in `accuracy`.
/// @code
/// std::vector<double> x{1, 1e-300}, y(2);
/// kelvm::erfc_inv(x, y); // 0, 26.209469960516124
/// @endcode
template <accuracy Level = accuracy::full, class X, class Y> status erfc_inv(const X& x, Y&& y) {
  return detail::apply<detail::ErfcInv, Level>(detail::InOrder(), x, std::forward<Y>(y));
}

/// y[i] = the distribution function of the standard normal distribution at x[i], for every real number, with its
/// relative accuracy over the whole tail; exactly 1/2 at 0, -infinity gives +0, +infinity 1.
///
/// - Warning: underflow where a finite number's result is below the normal range.
/// - Accuracy: full within 1 ulp (floats correctly rounded), high and low as in `accuracy`.
/// @code
/// std::vector<double> x{0, -1.96}, y(2);
/// kelvm::cdf_norm(x, y); // 0.5, 0.024997895148220435
/// @endcode
template <accuracy Level = accuracy::full, class X, class Y> status cdf_norm(const X& x, Y&& y) {
  return detail::apply<detail::CdfNorm, Level>(detail::InOrder(), x, std::forward<Y>(y));
}

/// y[i] = the quantile of the standard normal distribution for the probability x[i], a real number in [0, 1]: the
/// inverse of cdf_norm(); exactly +0 at 1/2.
///
/// - Warnings: pole at 0 (-infinity) and 1 (+infinity), domain beyond.
/// - Accuracy: full within 1 ulp (floats correctly rounded), high and low as in `accuracy`.
/// @code
/// std::vector<double> x{0.5, 0.975}, y(2);
/// kelvm::cdf_norm_inv(x, y); // 0, 1.959963984540054
/// @endcode
template <accuracy Level = accuracy::full, class X, class Y> status cdf_norm_inv(const X& x, Y&& y) {
  return detail::apply<detail::CdfNormInv, Level>(detail::InOrder(), x, std::forward<Y>(y));
}

} // namespace KELVM_WRONG_SIZE_
} // namespace kelvm

#endif
