// One line exports a member, inside its kernel file's namespace. The line says how its arguments look; its prototype is
// in the public header, and its check order comes from the members list:
//
//   KELVM_UNARY(kelsFloor_64f, Floor<double>)
//
// The library is compiled with hidden visibility: these functions and the version query are exported and nothing else.
#pragma once

#include "frame/frame.hpp"

namespace kelvm::inline KELVM_BUILD {

#define KELVM_MEMBER(name, family, type, suffix, shape, order) inline constexpr Order order_of_##name = Order::order;
#include "members.def"

template <class K> using Real = typename K::Element;
template <class K> using Complex = std::conditional_t<sizeof(Real<K>) == 4, Complex32f, Complex64f>;

/// An array of complex numbers as one of their parts, an array of reals as it is.
template <class K, class E> inline const Real<K>* parts(const E* p) { return reinterpret_cast<const Real<K>*>(p); }
template <class K, class E> inline Real<K>* parts(E* p) { return reinterpret_cast<Real<K>*>(p); }

} // namespace kelvm::inline KELVM_BUILD

#define KELVM_UNARY(name, ...) KELVM_ONE_TO_ONE(name, Real, 1, Real, 1, __VA_ARGS__)
#define KELVM_COMPLEX_UNARY(name, ...) KELVM_ONE_TO_ONE(name, Complex, 2, Complex, 2, __VA_ARGS__)
#define KELVM_REAL_TO_COMPLEX(name, ...) KELVM_ONE_TO_ONE(name, Real, 1, Complex, 2, __VA_ARGS__)
#define KELVM_COMPLEX_TO_REAL(name, ...) KELVM_ONE_TO_ONE(name, Complex, 2, Real, 1, __VA_ARGS__)
#define KELVM_BINARY(name, ...) KELVM_TWO_TO_ONE(name, Real, 1, __VA_ARGS__)
#define KELVM_COMPLEX_BINARY(name, ...) KELVM_TWO_TO_ONE(name, Complex, 2, __VA_ARGS__)
/// For kernels with parts_by_themselves = 2.
#define KELVM_PARTS_UNARY(name, ...) KELVM_ONE_TO_ONE(name, Complex, 1, Complex, 1, __VA_ARGS__)
#define KELVM_PARTS_BINARY(name, ...) KELVM_TWO_TO_ONE(name, Complex, 1, __VA_ARGS__)
/// The kernel is constructed from the scalar, once a call.
#define KELVM_SCALAR_POWER(name, ...) KELVM_WITH_SCALAR(name, Real, 1, __VA_ARGS__)
#define KELVM_COMPLEX_SCALAR_POWER(name, ...) KELVM_WITH_SCALAR(name, Complex, 2, __VA_ARGS__)

#define KELVM_TWO_OUTPUTS(name, ...)                                                                                   \
  extern "C" KELVM_API kelStatus name(const kelvm::Real<__VA_ARGS__>* src, kelvm::Real<__VA_ARGS__>* dst1,             \
                                      kelvm::Real<__VA_ARGS__>* dst2, int len) {                                       \
    return kelvm::call<__VA_ARGS__, kelvm::Shape<1, 1, 2, 1>>(kelvm::order_of_##name, __VA_ARGS__{},                   \
                                                              {{src}, {dst1, dst2}}, len);                             \
  }

#define KELVM_ONE_TO_ONE(name, From, from_parts, To, to_parts, ...)                                                    \
  extern "C" KELVM_API kelStatus name(const kelvm::From<__VA_ARGS__>* src, kelvm::To<__VA_ARGS__>* dst, int len) {     \
    return kelvm::call<__VA_ARGS__, kelvm::Shape<1, from_parts, 1, to_parts>>(                                         \
        kelvm::order_of_##name, __VA_ARGS__{}, {{kelvm::parts<__VA_ARGS__>(src)}, {kelvm::parts<__VA_ARGS__>(dst)}},   \
        len);                                                                                                          \
  }
#define KELVM_TWO_TO_ONE(name, Type, type_parts, ...)                                                                  \
  extern "C" KELVM_API kelStatus name(const kelvm::Type<__VA_ARGS__>* src1, const kelvm::Type<__VA_ARGS__>* src2,      \
                                      kelvm::Type<__VA_ARGS__>* dst, int len) {                                        \
    return kelvm::call<__VA_ARGS__, kelvm::Shape<2, type_parts, 1, type_parts>>(                                       \
        kelvm::order_of_##name, __VA_ARGS__{},                                                                         \
        {{kelvm::parts<__VA_ARGS__>(src1), kelvm::parts<__VA_ARGS__>(src2)}, {kelvm::parts<__VA_ARGS__>(dst)}}, len);  \
  }
#define KELVM_WITH_SCALAR(name, Type, type_parts, ...)                                                                 \
  extern "C" KELVM_API kelStatus name(const kelvm::Type<__VA_ARGS__>* src, kelvm::Type<__VA_ARGS__> value,             \
                                      kelvm::Type<__VA_ARGS__>* dst, int len) {                                        \
    return kelvm::call<__VA_ARGS__, kelvm::Shape<1, type_parts, 1, type_parts>>(                                       \
        kelvm::order_of_##name, __VA_ARGS__{value},                                                                    \
        {{kelvm::parts<__VA_ARGS__>(src)}, {kelvm::parts<__VA_ARGS__>(dst)}}, len);                                    \
  }
