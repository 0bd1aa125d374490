// One line exports a function, inside its kernel file's namespace: its name and the kernel that computes it.
//
//   KELVM_UNARY(kelsFloor_64f, Floor<double>)
//
// The public header declares the name with its argument types, real or complex; the list of all functions has the order
// of its argument checks. The library is compiled with hidden visibility: these functions and the version query are
// exported and nothing else.
//
// A kernel file that is compiled twice, with lookups by loads and by gathers, defines a hidden function for each, and
// the exported name is an indirect function: the loader asks which of them it shall be.
//
// With KELVM_IN_REGISTERS the same lines make functions of registers instead, for the library beside:
// frame/registers.hpp.
#pragma once

#include "cpu/gathers.hpp"
#include "frame/frame.hpp"

#if KELVM_IN_REGISTERS
#  include "frame/registers.hpp"
#else

namespace kelvm::inline KELVM_BUILD {

#  define KELVM_MEMBER(name, family, type, suffix, shape, order) inline constexpr Order order_of_##name = Order::order;
#  include "members.def"

/// Argument number I of a function type.
template <int I, class F> struct ArgumentOf;
template <int I, class R, class A, class... More>
struct ArgumentOf<I, R(A, More...)> : ArgumentOf<I - 1, R(More...)> {};
template <class R, class A, class... More> struct ArgumentOf<0, R(A, More...)> { using type = A; };
template <int I, class F> using Argument = typename ArgumentOf<I, F>::type;

/// How many lanes of the kernel an element of type E is: two for a complex number that is computed as a whole.
template <class K, class E>
inline constexpr int parts_of = int(sizeof(E) / sizeof(typename K::Element)) / K::parts_by_themselves;
template <class K, class E> inline const typename K::Element* parts(const E* p) {
  return reinterpret_cast<const typename K::Element*>(p);
}
template <class K, class E> inline typename K::Element* parts(E* p) {
  return reinterpret_cast<typename K::Element*>(p);
}

template <class K, class From, class To>
inline kelStatus call(Order order, const K& kernel, const From* src, To* dst, int len) {
  constexpr Shape shape{1, parts_of<K, From>, 1, parts_of<K, To>};
  return call<shape>(order, kernel, {parts<K>(src), nullptr, parts<K>(dst), nullptr}, len);
}
template <class K, class From, class To>
inline kelStatus call(Order order, const K& kernel, const From* src1, const From* src2, To* dst, int len) {
  constexpr Shape shape{2, parts_of<K, From>, 1, parts_of<K, To>};
  return call<shape>(order, kernel, {parts<K>(src1), parts<K>(src2), parts<K>(dst), nullptr}, len);
}
template <class K, class From, class To>
inline kelStatus call(Order order, const K& kernel, const From* src, To* dst1, To* dst2, int len) {
  constexpr Shape shape{1, parts_of<K, From>, 2, parts_of<K, To>};
  return call<shape>(order, kernel, {parts<K>(src), nullptr, parts<K>(dst1), parts<K>(dst2)}, len);
}

} // namespace kelvm::inline KELVM_BUILD

#  define KELVM_ARGUMENT(i, name) kelvm::Argument<i, decltype(name)>

/// The head of an exported function. Of a file that is compiled twice: of the function that stands behind the name
/// where the processor prefers that form; the form by loads defines the name.
#  if KELVM_BY_GATHERS
#    define KELVM_FUNCTION(name, ...) extern "C" kelStatus name##_by_gathers(__VA_ARGS__)
#  elif defined(KELVM_BY_GATHERS)
#    define KELVM_FUNCTION(name, ...)                                                                                  \
      extern "C" KELVM_HIDDEN decltype(name) name##_by_gathers, name##_by_loads;                                       \
      extern "C" KELVM_WHILE_LOADING decltype(name)* name##_chosen() {                                                 \
        return kelvm::prefers_gathers() ? name##_by_gathers : name##_by_loads;                                         \
      }                                                                                                                \
      extern "C" KELVM_API __attribute__((ifunc(#name "_chosen"))) decltype(name) name;                                \
      extern "C" kelStatus name##_by_loads(__VA_ARGS__)
#  else
#    define KELVM_FUNCTION(name, ...) extern "C" KELVM_API kelStatus name(__VA_ARGS__)
#  endif

#  define KELVM_UNARY(name, ...)                                                                                       \
    KELVM_FUNCTION(name, KELVM_ARGUMENT(0, name) src, KELVM_ARGUMENT(1, name) dst, int len) {                          \
      return kelvm::call(kelvm::order_of_##name, __VA_ARGS__{}, src, dst, len);                                        \
    }
#  define KELVM_BINARY(name, ...)                                                                                      \
    KELVM_FUNCTION(name, KELVM_ARGUMENT(0, name) src1, KELVM_ARGUMENT(1, name) src2, KELVM_ARGUMENT(2, name) dst,      \
                   int len) {                                                                                          \
      return kelvm::call(kelvm::order_of_##name, __VA_ARGS__{}, src1, src2, dst, len);                                 \
    }
#  define KELVM_TWO_OUTPUTS(name, ...)                                                                                 \
    KELVM_FUNCTION(name, KELVM_ARGUMENT(0, name) src, KELVM_ARGUMENT(1, name) dst1, KELVM_ARGUMENT(2, name) dst2,      \
                   int len) {                                                                                          \
      return kelvm::call(kelvm::order_of_##name, __VA_ARGS__{}, src, dst1, dst2, len);                                 \
    }
/// The kernel is constructed from the scalar, once a call.
#  define KELVM_SCALAR_POWER(name, ...)                                                                                \
    KELVM_FUNCTION(name, KELVM_ARGUMENT(0, name) src, KELVM_ARGUMENT(1, name) value, KELVM_ARGUMENT(2, name) dst,      \
                   int len) {                                                                                          \
      return kelvm::call(kelvm::order_of_##name, __VA_ARGS__{value}, src, dst, len);                                   \
    }

#endif
