// Functions that are one instruction of the processor for all but exceptional elements, over arrays with gaps. Such an
// instruction takes less time than the way through a block and back: elements are collected in registers, and results
// go from registers to their places.
#pragma once

#include "loops.hpp"

#include <smmintrin.h>
#include <type_traits>
#include <utility>

namespace kelvm_python {

/// The fields of MXCSR that say what operations give: flush-to-zero, rounding, denormals-are-zero.
inline constexpr unsigned mode_mask = 0xE040;

inline constexpr npy_intp cache_line = 64;

typedef float Floats __attribute__((vector_size(16)));
typedef double Doubles __attribute__((vector_size(16)));
typedef int Words __attribute__((vector_size(16)));
typedef unsigned Bits __attribute__((vector_size(16)));

/// A register of the real numbers that elements consist of.
template <class E> struct RegisterOf;
template <> struct RegisterOf<float> { using Type = Floats; };
template <> struct RegisterOf<double> { using Type = Doubles; };
template <> struct RegisterOf<Complex32f> { using Type = Floats; };
template <> struct RegisterOf<Complex64f> { using Type = Doubles; };
template <class E> using Register = typename RegisterOf<E>::Type;
template <class V> inline constexpr bool of_floats = std::is_same_v<V, Floats>;

/// `of` has the results of the library's function, and raises its flags, but for lanes that `exceptional` names.
template <int operands> struct Instruction {
  static constexpr int sources = operands;
  static constexpr bool divides = false, is_root = false, has_exceptional = false, has_exact_underflow = false;
};

/// In assembly, because the first operand's NaN comes out of two, and a compiler is free to exchange them.
struct Sum : Instruction<2> {
  template <class V> static V of(V x, V y) {
    if constexpr (of_floats<V>)
      asm("addps %1, %0" : "+x"(x) : "x"(y));
    else
      asm("addpd %1, %0" : "+x"(x) : "x"(y));
    return x;
  }
};
struct Product : Instruction<2> {
  template <class V> static V of(V x, V y) {
    if constexpr (of_floats<V>)
      asm("mulps %1, %0" : "+x"(x) : "x"(y));
    else
      asm("mulpd %1, %0" : "+x"(x) : "x"(y));
    return x;
  }
};
struct Difference : Instruction<2> {
  template <class V> static V of(V x, V y) { return x - y; }
};
struct Square : Instruction<1> {
  template <class V> static V of(V x) { return x * x; }
};
/// The function raises underflow for exact quotients below the normal range too: what is not normal is left to it.
struct Quotient : Instruction<2> {
  static constexpr bool divides = true, has_exceptional = true;
  template <class V> static V of(V x, V y) { return x / y; }
  /// In the sign of a lane. The words that have the exponents, doubled, are in an interval that is moved to begin at
  /// the least int.
  template <class V> static Words exceptional(V z, V x, V) {
    constexpr unsigned least = of_floats<V> ? 0x00800001 : 0x00100001, largest = of_floats<V> ? 0x7F7FFFFF : 0x7FEFFFFF;
    const Bits doubled = Bits(z) + Bits(z) + (0x80000000 - 2 * least);
    return (Words(doubled) > int(0x80000000 + 2 * (largest - least) + 1)) & Words(x != 0);
  }
};
/// Raises underflow for the only exact one below the normal range too.
struct Reciprocal : Instruction<1> {
  static constexpr bool divides = true, has_exact_underflow = true;
  template <class V> static V of(V x) { return 1 / x; }
  /// In the sign of a lane: of the greatest power of two. Other doubles of the same upper half underflow by themselves.
  template <class V> static Words underflows(V x) {
    return Words(Bits(x) + Bits(x) == (of_floats<V> ? 0xFE000000 : 0xFFC00000));
  }
};
struct Root : Instruction<1> {
  static constexpr bool divides = true, is_root = true;
  static Floats of(Floats x) { return _mm_sqrt_ps(x); }
  static Doubles of(Doubles x) { return _mm_sqrt_pd(x); }
};
/// A product, as in the library: a NaN keeps its sign.
struct Absolute : Instruction<1> {
  template <class V> static V of(V x) { return x * V((Words(x) & Words(-V{})) | Words(V{} + 1)); }
};
template <int How> struct Rounding : Instruction<1> {
  static Floats of(Floats x) { return _mm_round_ps(x, How); }
  static Doubles of(Doubles x) { return _mm_round_pd(x, How); }
};
struct Copy : Instruction<1> {
  template <class V> static V of(V x) { return x; }
};
/// Of complex numbers.
struct Conjugate : Instruction<1> {
  static Floats of(Floats z) { return Floats(Words(z) ^ Words(Floats{0, -0.0F, 0, -0.0F})); }
  static Doubles of(Doubles z) { return Doubles(Words(z) ^ Words(Doubles{0, -0.0})); }
};

/// f(0), f(1)... without a loop.
template <int count, class F> [[gnu::always_inline]] inline void unrolled(const F& f) {
  [&]<int... i>(std::integer_sequence<int, i...>) { (f(i), ...); }
  (std::make_integer_sequence<int, count>{});
}

/// What is loaded next is loaded later: a compiler would begin with the last, and memory is best read in the order of
/// its addresses.
template <class V> [[gnu::always_inline]] inline V in_order(V loaded) {
  asm volatile("" : "+x"(loaded));
  return loaded;
}

enum class Gaps { none, of_one, any };

/// As many elements as a register holds. Gaps of one float are those between the parts of complex numbers.
template <class E, Gaps gaps> [[gnu::always_inline]] inline Register<E> collect(const char* from, npy_intp step) {
  if constexpr (gaps == Gaps::of_one) {
    static_assert(sizeof(E) == 4);
    return in_order(four_near<8>(from));
  } else if constexpr (gaps == Gaps::none && sizeof(E) == 4) {
    return in_order(load<Floats>(from));
  } else if constexpr (gaps == Gaps::none || sizeof(E) == 16) {
    return load<Register<E>>(from);
  } else if constexpr (sizeof(E) == 4) {
    return in_order(Floats{load<float>(from), load<float>(from + step), load<float>(from + 2 * step),
                           load<float>(from + 3 * step)});
  } else {
    return Register<E>(in_order(_mm_loadh_pd(_mm_load_sd(reinterpret_cast<const double*>(from)),
                                             reinterpret_cast<const double*>(from + step))));
  }
}

/// One element in the first lane. Division has it in the others too, where zeros would raise flags.
template <class E, bool everywhere> [[gnu::always_inline]] inline Register<E> collect_one(const char* from) {
  if constexpr (everywhere || sizeof(E) == 16)
    return collect<E, Gaps::any>(from, 0);
  else if constexpr (sizeof(E) == 4)
    return _mm_load_ss(reinterpret_cast<const float*>(from));
  else
    return Register<E>(_mm_load_sd(reinterpret_cast<const double*>(from)));
}

template <class E, bool gaps> [[gnu::always_inline]] inline void spread(Register<E> z, char* to, npy_intp step) {
  if constexpr (!gaps || sizeof(E) == 16) {
    std::memcpy(to, &z, sizeof z);
  } else {
    unrolled<sizeof z / sizeof(E)>([&](int i) {
      const auto element = std::conditional_t<sizeof(E) == 4, Floats, Doubles>(z)[i];
      std::memcpy(to + i * step, &element, sizeof element);
    });
  }
}

/// Elements in registers: a few registers of every source, or the next element.
template <class Op, class E> struct Elements {
  static constexpr int sources = Op::sources;
  static constexpr int lanes = sizeof(Register<E>) / sizeof(E), registers = lanes < 4 && sources == 1 ? 4 : 2;

  Register<E> of[registers][sources];

  Register<E> result(int r) const {
    if constexpr (sources == 1)
      return Op::of(of[r][0]);
    else
      return Op::of(of[r][0], of[r][1]);
  }
  Words exceptional(int r, Register<E> z) const {
    if constexpr (sources == 1)
      return Op::exceptional(z, of[r][0]);
    else
      return Op::exceptional(z, of[r][0], of[r][1]);
  }
  /// What the function makes of register r.
  template <class Call> [[gnu::noinline]] Register<E> by_function(int r, int count, const Call& call) const {
    E in[sources][lanes], out[lanes];
    std::memcpy(in, of[r], sizeof in);
    const E* src[sources];
    for (int s = 0; s < sources; ++s) src[s] = in[s];
    E* dst[] = {out};
    call(src, dst, count);
    Register<E> z{};
    std::memcpy(&z, out, count * sizeof(E));
    return z;
  }
};

inline bool any(Words found, Floats) { return _mm_movemask_ps(Floats(found)) != 0; }
inline bool any(Words found, Doubles) { return _mm_movemask_pd(Doubles(found)) != 0; }

template <class Op, class E, Gaps gaps, bool scatter, class Call>
void through_registers(char* const* args, npy_intp n, const npy_intp* steps, bool one_by_one, const Call& call) {
  using V = Register<E>;
  using These = Elements<Op, E>;
  constexpr int sources = Op::sources;
  constexpr int lanes = These::lanes, registers = These::registers, together = lanes * registers;
  const char *x = args[0], *y = args[sources - 1];
  char* z = args[sources];
  const npy_intp x_step = steps[0], y_step = steps[sources - 1], z_step = steps[sources];
  Words underflow{};
  // A sum of scalars takes less than the collection of its operands.
  constexpr bool scalars = sources == 2 && gaps == Gaps::any && scatter && !Op::divides;
  if (scalars) one_by_one = true;
  for (; !one_by_one && n >= together; n -= together) {
    These these;
    V found[registers];
    unrolled<registers>([&](int r) {
      these.of[r][0] = collect<E, gaps>(x + r * lanes * x_step, x_step);
      if (sources == 2) these.of[r][sources - 1] = collect<E, gaps>(y + r * lanes * y_step, y_step);
      found[r] = these.result(r);
    });
    if constexpr (Op::has_exceptional) {
      Words exceptional{};
      unrolled<registers>([&](int r) { exceptional |= these.exceptional(r, found[r]); });
      if (any(exceptional, V())) [[unlikely]]
        unrolled<registers>([&](int r) { found[r] = these.by_function(r, lanes, call); });
    }
    if constexpr (Op::has_exact_underflow)
      unrolled<registers>([&](int r) { underflow |= Op::underflows(these.of[r][0]); });
    unrolled<registers>([&](int r) { spread<E, scatter>(found[r], z + r * lanes * z_step, z_step); });
    x += together * x_step, y += together * y_step, z += together * z_step;
  }
  const auto next = [&](int i) {
    These these;
    these.of[0][0] = collect_one<E, Op::divides>(x + i * x_step);
    if (sources == 2) these.of[0][sources - 1] = collect_one<E, Op::divides>(y + i * y_step);
    V found = these.result(0);
    if constexpr (Op::has_exceptional)
      if (any(these.exceptional(0, found), V())) [[unlikely]]
        found = these.by_function(0, 1, call);
    if constexpr (Op::has_exact_underflow) underflow |= Op::underflows(these.of[0][0]);
    std::memcpy(z + i * z_step, &found, sizeof(E));
  };
  const auto go_on = [&](int count) { n -= count, x += count * x_step, y += count * y_step, z += count * z_step; };
  if (scalars)
    while (n >= 3) unrolled<3>(next), go_on(3);
  while (n > 0) next(0), go_on(1);
  if (any(underflow, V())) [[unlikely]]
    std::feraiseexcept(FE_UNDERFLOW);
}

/// Calls call(sources, destinations, count) as for_each_piece does, or computes the results itself.
template <class Op, class E, class Call>
[[gnu::noinline]] void instructions(char* const* args, npy_intp n, const npy_intp* steps, Call call) {
  constexpr int sources = Op::sources;
  if (n <= 0) return;
  const Operands<E, sources, E, 1> operands(args, n, steps, false);
  // The library has the wider registers. They win where no source has gaps but is one value for all elements, where
  // many elements are moved in little time (floats backwards; with AVX-512 doubles, too, and results that are floats
  // and lie near each other), and where the divider takes the time, unless each element is in another line of the
  // cache: with doubles, but for quotients where all operands have gaps, and with roots of floats that go to a place
  // without gaps.
  bool without_gaps = operands.direct[sources] && operands.worst <= Overlap::same;
  bool all_have_gaps = true, in_few_lines = true;
  constexpr bool floats = std::is_same_v<E, float>;
  bool quick_to_move = (has_avx512 || floats) && n >= 128 && operands.worst <= Overlap::same;
  for (int k = 0; k <= sources; ++k) {
    const int most_apart = has_avx512 && floats && k == sources ? 3 : 1;
    quick_to_move &= steps[k] == 0 || std::abs(steps[k]) <= most_apart * npy_intp(sizeof(E));
    without_gaps &= operands.direct[k] || steps[k] == 0;
    all_have_gaps &= !operands.direct[k];
    in_few_lines &= std::abs(steps[k]) < cache_line;
  }
  const bool divider_takes_longest =
      Op::divides && in_few_lines &&
      (of_floats<Register<E>> ? Op::is_root && operands.direct[sources] : Op::is_root || !all_have_gaps);
  const bool usual_mode = (_mm_getcsr() & mode_mask) == 0;
  if (without_gaps || quick_to_move || divider_takes_longest || !usual_mode) return operands.run(n, call);
  const bool one_by_one = operands.worst == Overlap::dependent;
  const auto steps_of_sources_are = [=](npy_intp wanted) {
    return std::all_of(steps, steps + sources, [=](npy_intp step) { return step == wanted; });
  };
  const bool scatter = steps[sources] != sizeof(E);
  if constexpr (std::is_same_v<E, float>) {
    if (steps_of_sources_are(2 * sizeof(E)))
      return scatter ? through_registers<Op, E, Gaps::of_one, true>(args, n, steps, one_by_one, call)
                     : through_registers<Op, E, Gaps::of_one, false>(args, n, steps, one_by_one, call);
  }
  if (steps_of_sources_are(sizeof(E)))
    through_registers<Op, E, Gaps::none, true>(args, n, steps, one_by_one, call);
  else if (scatter)
    through_registers<Op, E, Gaps::any, true>(args, n, steps, one_by_one, call);
  else
    through_registers<Op, E, Gaps::any, false>(args, n, steps, one_by_one, call);
}

} // namespace kelvm_python
