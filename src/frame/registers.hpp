// Functions of registers: the kernels without the block loop. A line like KELVM_UNARY(kelsExp_64f_A53, Exp64<A53>)
// defines, in the build for AVX2,
//
//   V kelsExp_64f_A53_avx2(V x)                            a whole register
//   V kelsExp_64f_A53_masked_avx2(V x, AbiMask<V> mask)    lanes outside the mask hold anything afterwards
//   double kelsExp_64f_A53_one_avx2(double x)              one element
//
// with the bits of the array function, under names for the linker alone. There is no status, and the floating-point
// mode is the caller's. Reading the flags costs as much as a function, so elements whose formula might raise one that
// they do not earn are told by their values (`ordinary` and `noisy`, frame/kernel.hpp), and computed apart with the
// others that are not ordinary. Of a kernel that has `ordinary` one comparison tells most registers to be so. Only the
// others, those with zeros for instance, are looked at more closely. Where no interval tells, a kernel may have
//
//   template <class V> static bool may_be_unusual(V x)       false only if no lane is special or noisy
#pragma once

#include "frame/frame.hpp"
#include "simd/abi_mask.hpp"
#include "simd/constants.hpp"
#include "simd/interval.hpp"
#include "simd/magnitude_test.hpp"

#include <string_view>

namespace kelvm::inline KELVM_BUILD {

/// Whether a function of members.def is one of registers: of a family in registers/functions.def, in one of the two
/// accuracies of its type. Of the other functions there is a name without a use, which the linker drops.
consteval bool in_registers(std::string_view name) {
  constexpr std::string_view families[] = {
#define KELVM_REGISTERS(name, family, shape) "kels" #family "_",
#define KELVM_REGISTERS_LIBM(name, family, shape) "kels" #family "_",
#include "registers/functions.def"
  };
  for (const std::string_view family : families)
    for (const std::string_view accuracy : {"64f_A53", "64f_A50", "32f_A24", "32f_A21"})
      if (name.starts_with(family) && name.substr(family.size()) == accuracy) return true;
  return false;
}

template <bool Listed, Shape S, class K> class InRegisters : Loop<K, S> {
  using Base = Loop<K, S>;
  using typename Base::T, typename Base::V;
  using Inputs = typename Base::template Inputs<V>;
  using Outputs = typename Base::template Outputs<V>;

public:
  template <class... X> static Outputs compute(X... x) {
    if constexpr (Listed) {
      const K kernel;
      const Inputs in{{x...}};
      if (may_be_unusual(in)) [[unlikely]] {
        if (any(Base::special(kernel, in) | Base::noisy(kernel, in))) return compute_apart(x...);
      }
      typename Base::ResultTest undecided{};
      const Outputs out = Base::template formula<V>(kernel, in, undecided);
      if (Base::some(undecided)) [[unlikely]]
        return compute_apart(x...);
      return out;
    } else {
      return {};
    }
  }

private:
  /// False where all lanes are known to be neither special nor noisy.
  static bool may_be_unusual(const Inputs& in) {
    if constexpr (requires { K::may_be_unusual(in.of[0]); }) {
      return K::may_be_unusual(in.of[0]);
    } else if constexpr (requires { K::ordinary; }) {
      static_assert(K::ordinary.from < K::ordinary.to);
      return Base::spread(in, [](auto... x) {
        return any_outside<K::ordinary.both_signs>(T(K::ordinary.from), T(K::ordinary.to), x...);
      });
    } else {
      return true;
    }
  }
  /// Flags that no lane earns are taken back. Exceptions that are not masked trap at the end.
  template <class... X> [[gnu::noinline]] static Outputs compute_apart(X... x) {
    Outputs out;
    in_mode<Mode::callers_masked, spurious_flags<K>>(&any_vector<X...>, &out, x...);
    return out;
  }
  template <class... X> [[gnu::noinline]] static Outcome any_vector(Outputs* out, X... x) {
    Outcome outcome{kelStatusOk, may_be_spurious};
    *out = Base::any_vector(K(), Inputs{{x...}}, outcome);
    return outcome;
  }
};

/// x with an ordinary argument in the lanes outside the mask.
template <class K, class V> inline V masked(V x, AbiMask<V> mask) {
  return in_lanes_of(mask, x, splat<V>(K::safe_input));
}
/// x in lane 0, an ordinary argument in the others.
template <class K, class T> inline Native<T> alone(T x) {
  Native<T> v = splat<Native<T>>(K::safe_input);
  v[0] = x;
  return v;
}

} // namespace kelvm::inline KELVM_BUILD

#define KELVM_JOINED_AS_IS(a, b) a##b
#define KELVM_JOINED(a, b) KELVM_JOINED_AS_IS(a, b)
/// The name of this build's function.
#define KELVM_REGISTERS_NAME(name) KELVM_JOINED(name##_, KELVM_BUILD)
#define KELVM_REGISTERS_TYPES(name, sources, destinations, ...)                                                        \
  using Kernel_##name = __VA_ARGS__;                                                                                   \
  using Lane_##name = Kernel_##name::Element;                                                                          \
  using Vector_##name = kelvm::Native<Lane_##name>;                                                                    \
  using Registers_##name =                                                                                             \
      kelvm::InRegisters<kelvm::in_registers(#name), kelvm::Shape{sources, 1, destinations, 1}, Kernel_##name>;

#define KELVM_UNARY(name, ...)                                                                                         \
  KELVM_REGISTERS_TYPES(name, 1, 1, __VA_ARGS__)                                                                       \
  extern "C" [[gnu::flatten]] Vector_##name KELVM_REGISTERS_NAME(name)(Vector_##name x) {                              \
    return Registers_##name::compute(x).of[0];                                                                         \
  }                                                                                                                    \
  extern "C" Vector_##name KELVM_REGISTERS_NAME(name##_masked)(Vector_##name x, kelvm::AbiMask<Vector_##name> mask) {  \
    return KELVM_REGISTERS_NAME(name)(kelvm::masked<Kernel_##name>(x, mask));                                          \
  }                                                                                                                    \
  extern "C" Lane_##name KELVM_REGISTERS_NAME(name##_one)(Lane_##name x) {                                             \
    return KELVM_REGISTERS_NAME(name)(kelvm::alone<Kernel_##name>(x))[0];                                              \
  }
#define KELVM_BINARY(name, ...)                                                                                        \
  KELVM_REGISTERS_TYPES(name, 2, 1, __VA_ARGS__)                                                                       \
  extern "C" [[gnu::flatten]] Vector_##name KELVM_REGISTERS_NAME(name)(Vector_##name x, Vector_##name y) {             \
    return Registers_##name::compute(x, y).of[0];                                                                      \
  }                                                                                                                    \
  extern "C" Vector_##name KELVM_REGISTERS_NAME(name##_masked)(Vector_##name x, Vector_##name y,                       \
                                                               kelvm::AbiMask<Vector_##name> mask) {                   \
    return KELVM_REGISTERS_NAME(name)(kelvm::masked<Kernel_##name>(x, mask), kelvm::masked<Kernel_##name>(y, mask));   \
  }                                                                                                                    \
  extern "C" Lane_##name KELVM_REGISTERS_NAME(name##_one)(Lane_##name x, Lane_##name y) {                              \
    return KELVM_REGISTERS_NAME(name)(kelvm::alone<Kernel_##name>(x), kelvm::alone<Kernel_##name>(y))[0];              \
  }
/// The results go to memory: the function of a whole register stores as many lanes behind each pointer, unaligned.
#define KELVM_TWO_OUTPUTS(name, ...)                                                                                   \
  KELVM_REGISTERS_TYPES(name, 1, 2, __VA_ARGS__)                                                                       \
  extern "C" [[gnu::flatten]] void KELVM_REGISTERS_NAME(name)(Vector_##name x, Lane_##name * first,                    \
                                                              Lane_##name * second) {                                  \
    const auto out = Registers_##name::compute(x);                                                                     \
    kelvm::store<Vector_##name>(first, out.of[0]);                                                                     \
    kelvm::store<Vector_##name>(second, out.of[1]);                                                                    \
  }                                                                                                                    \
  extern "C" void KELVM_REGISTERS_NAME(name##_one)(Lane_##name x, Lane_##name * first, Lane_##name * second) {         \
    Lane_##name results[2][kelvm::native_lanes<Lane_##name>];                                                          \
    KELVM_REGISTERS_NAME(name)(kelvm::alone<Kernel_##name>(x), results[0], results[1]);                                \
    *first = results[0][0];                                                                                            \
    *second = results[1][0];                                                                                           \
  }
/// A vector of exponents is a register like the other.
#define KELVM_SCALAR_POWER(name, ...)
