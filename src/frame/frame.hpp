// The frame of every function: argument checks, floating-point mode, block loop, scalar path of special lanes, tail,
// status.
//
// A kernel is a struct (stateless, but for the scalar-power shape) that derives from KernelDefaults and has
//
//   using Element = double;         the type of a lane: of the parts, where elements are complex
//   template <class V> static SignMask<V> special(V x)
//                                   the lanes that formula does not cover, by their sign bits; integer work only
//   template <class V> static V formula(V x)
//                                   reduce, approximate, reconstruct, for any width. It raises no flag but inexact for
//                                   an unmarked element, or underflow with `spurious_underflow`.
//   static double element(double x, kelStatus& status)
//                                   the complete function for one element: special results with their code and flag,
//                                   formula(x) with one lane where that covers it. Called for marked lanes only.
//
// A kernel with `covers_everything` has formula alone. A kernel with a ResultTest<V> gives formula a last parameter,
// ResultTest<V>& test, for lanes whose result is not decided; they go to element() as well. It is BitMask, where
// formula sets them, or, where that costs too much, a type that gathers what it needs from all vectors of a block:
// any() tells whether a lane of the block may be undecided, lanes(), asked after a single vector, which are.
//
// Where special takes many operations a kernel may have a QuickTest<V>, which add(x) gives all vectors of a block:
// passed() says that no lane is special, else special decides.
//
// A kernel with `has_wide_formula` has a second pair, wide_special and wide_formula, that takes the place of the first
// in vectors with marked lanes: slower and covering more, with the bits of formula where that covers a lane. It may
// have a WideResultTest.
//
// Quiet NaNs are marked by special and yet common: missing values. What they give is told by element, and for whole
// vectors by nan_result; nan_lanes are those elements that give it. Kernels of one real source get both from
// KernelDefaults, others may define them.
//
// Short calls look at the flags, and with AVX-512 at the control word, only where an element may want it. An unmarked
// element raises no flag but inexact, nor traps by an exact subnormal number, where it is zero or of an ordinary
// magnitude: from 2^-60, floats from 2^-28, to 2^60, of two sources both `everyday`. A kernel may have
//
//   static constexpr Magnitudes ordinary{from, to}           others, which special marks none of
//   template <class V> static SignMask<V> noisy(V x)         unmarked lanes for which that is not so, whatever their
//                                                            magnitude
//
// Two sources, or a complex one, are two parameters (x, y); two complex sources are four: real and imaginary part of
// the first, then of the second. Two destinations, or a complex one, are a Pair.
#pragma once

#include "frame/mode.hpp"
#include "frame/status.hpp"
#include "simd/mode_probe.hpp"

#include <algorithm>
#include <cstddef>

namespace kelvm::inline KELVM_BUILD {

/// For formulas that fill 16 registers with fewer vectors than the usual number.
inline constexpr int few_vectors_in_flight = vector_bytes == 64 ? 4 : 2;
/// For formulas of one operation: with four vectors of 32 bytes their speed depends on where the loop lies.
inline constexpr int single_operation_in_flight = vector_bytes == 32 ? 8 : 4;

/// The ResultTest of a formula that decides all lanes.
struct NoResultTest {
  bool any() const { return false; }
  BitMask lanes() const { return 0; }
};

/// The QuickTest of a kernel whose special is quick.
struct NoQuickTest {
  template <class... V> void add(V...) {}
  bool passed() const { return false; }
};

/// An interval of absolute values, of numbers of both signs or of positive ones alone.
struct Magnitudes {
  double from, to;
  bool both_signs = true;
};
/// Powers of those and products with their remainders are far above the smallest normal number, exponentials too.
template <class T>
inline constexpr Magnitudes everyday = sizeof(T) == 4 ? Magnitudes{0x1p-10, 8} : Magnitudes{0x1p-20, 512};
inline constexpr Magnitudes no_magnitudes{1, 0};

struct KernelDefaults {
  static constexpr Mode mode = Mode::nearest;
  /// Vectors of a block, computed together so that one does not wait for its own results.
  static constexpr int vectors_in_flight = 4;
  static constexpr bool covers_everything = false;
  template <class V> using ResultTest = NoResultTest;
  template <class V> using QuickTest = NoQuickTest;
  static constexpr bool has_wide_formula = false;
  template <class V> using WideResultTest = NoResultTest;
  /// For one real source: all that is not finite.
  template <class V> static SignMask<V> wide_special(V x) { return above(abs(x), largest_finite<Lane<V>>); }
  template <class V> static SignMask<V> nan_lanes(V x) { return quiet_nans(x); }
  template <class V> static V nan_result(V nan) { return nan; }
  /// The formula may raise underflow for elements that do not earn it (products of tiny intermediate values); the frame
  /// takes it back unless an element() call reports kelStatusUnderflow.
  static constexpr bool spurious_underflow = false;
  /// The same with invalid and overflow: a formula that takes special elements as they come and tells them by the
  /// result, which makes them undecided.
  static constexpr bool spurious_exceptions = false;
  /// A signalling NaN, which has no code, earns invalid with spurious_exceptions, too: its lane has to reach element().
  static constexpr bool signalling_nan_earns_invalid = false;
  /// Lanes that the formula leaves undecided raise no flag either, unless they are noisy.
  static constexpr bool undecided_are_quiet = true;
  /// A destination may overlap a source in any way; the result is that of a forward loop over the elements.
  static constexpr bool any_overlap = false;
  /// 2: a complex function that computes each part by itself. Its arrays are taken as arrays of parts, twice as long;
  /// an even lane of a vector is a real part.
  static constexpr int parts_by_themselves = 1;
  /// What marked lanes hold while their neighbours are computed: any ordinary argument.
  static constexpr float safe_input = 1.0f;
};

enum class Order { CountFirst, PointersFirst };

template <class K>
inline constexpr unsigned
    spurious_flags = (K::spurious_underflow ? flag_of(kelStatusUnderflow) : 0) |
                     (K::spurious_exceptions ? flag_of(kelStatusDomain) | flag_of(kelStatusOverflow) : 0);

/// The arrays of a call and the parts of an element in each: one for reals, two for complex numbers.
struct Shape {
  int sources, source_parts, destinations, destination_parts;

  constexpr int inputs() const { return sources * source_parts; }
  constexpr int outputs() const { return destinations * destination_parts; }
};

/// The second source and the second destination are null in shapes that have none. Four members, not two arrays: they
/// stay in registers.
template <class T, Shape S> struct Arrays {
  const T *source1, *source2;
  T *destination1, *destination2;

  template <int I> const T* source() const { return I == 0 ? source1 : source2; }
  template <int I> T* destination() const { return I == 0 ? destination1 : destination2; }
  Arrays from(std::ptrdiff_t element) const {
    const std::ptrdiff_t from = element * S.source_parts, to = element * S.destination_parts;
    return {source1 + from, S.sources == 2 ? source2 + from : nullptr, destination1 + to,
            S.destinations == 2 ? destination2 + to : nullptr};
  }
  bool has_null() const {
    return source1 == nullptr || (S.sources == 2 && source2 == nullptr) || destination1 == nullptr ||
           (S.destinations == 2 && destination2 == nullptr);
  }
  /// Whether the destination of a function with one starts inside a source, less than `bytes` behind its start.
  bool overlaps_within(std::size_t bytes) const {
    static_assert(S.destinations == 1);
    const auto starts_inside = [&](const T* source) {
      return reinterpret_cast<std::uintptr_t>(destination1) - reinterpret_cast<std::uintptr_t>(source) - 1 < bytes - 1;
    };
    return starts_inside(source1) || (S.sources == 2 && starts_inside(source2));
  }
};

/// f(0), f(1) ... f(N - 1), each argument a compile-time constant.
template <int N, class F> inline void unrolled(F f) {
  [&]<int... I>(std::integer_sequence<int, I...>) { (f(std::integral_constant<int, I>{}), ...); }
  (std::make_integer_sequence<int, N>{});
}

/// The block loop of kernel K over arrays of shape S. Results are bit for bit those of one element alone, so blocks,
/// single vectors and the tail may divide the array as they like.
template <class K, Shape S> class Loop {
protected:
  using T = typename K::Element;
  using V = Native<T>;
  static constexpr int width = native_lanes<T>;

  template <class U> struct Inputs { U of[S.inputs()]; };
  template <class U> struct Outputs { U of[S.outputs()]; };

  template <class U, class F> static auto spread(const Inputs<U>& in, F f) {
    return [&]<int... I>(std::integer_sequence<int, I...>) { return f(in.of[I]...); }
    (std::make_integer_sequence<int, S.inputs()>{});
  }
  template <class U> static Outputs<U> collect(U result) { return {{result}}; }
  template <class U> static Outputs<U> collect(Pair<U> result) { return {{result.first, result.second}}; }

  using ResultTest = typename K::template ResultTest<V>;
  static bool some(BitMask undecided) { return undecided != 0; }
  static BitMask lanes_of(BitMask undecided) { return undecided; }
  template <class D> static bool some(const D& test) { return test.any(); }
  template <class D> static BitMask lanes_of(const D& test) { return test.lanes(); }

  template <class U, class D> static Outputs<U> formula(const K& kernel, const Inputs<U>& in, D& undecided) {
    return collect<U>(spread(in, [&](auto... x) {
      if constexpr (std::is_same_v<D, NoResultTest>)
        return kernel.formula(x...);
      else
        return kernel.formula(x..., undecided);
    }));
  }
  static SignMask<V> special(const K& kernel, const Inputs<V>& in) {
    if constexpr (K::covers_everything)
      return SignMask<V>{};
    else
      return spread(in, [&](auto... x) { return kernel.special(x...); });
  }

  /// Ordered: lane 0 holds the first element, and so on. Otherwise, where all elements are complex, in the order of
  /// unzip.
  enum class Lanes { ordered, any };
  static constexpr bool may_zip = S.source_parts == 2 && S.destination_parts == 2;

  template <Lanes O> static Inputs<V> load_block(const Arrays<T, S>& arrays, std::ptrdiff_t i) {
    Inputs<V> in;
    unrolled<S.sources>([&](auto s) {
      const T* from = arrays.template source<s>() + i * S.source_parts;
      if constexpr (S.source_parts == 1) {
        in.of[s] = load<V>(from);
      } else {
        const V low = load<V>(from), high = load<V>(from + width);
        const Pair<V> parts = O == Lanes::any && may_zip ? unzip(low, high) : deinterleave(low, high);
        in.of[2 * s] = parts.first;
        in.of[2 * s + 1] = parts.second;
      }
    });
    return in;
  }
  /// The last count elements, the lanes beyond them filled with copies of the first.
  static Inputs<V> load_tail(const Arrays<T, S>& arrays, std::ptrdiff_t i, int count) {
    Inputs<V> in;
    unrolled<S.sources>([&](auto s) {
      const T* from = arrays.template source<s>() + i * S.source_parts;
      if constexpr (S.source_parts == 1) {
        in.of[s] = load_first<V>(from, count, splat<V>(load<T>(from)));
      } else {
        const V fill = splat_pair<V>(from);
        const int n = 2 * count;
        const V low = n < width ? load_first<V>(from, n, fill) : load<V>(from);
        const V high = n <= width ? fill : load_first<V>(from + width, n - width, fill);
        const Pair<V> parts = deinterleave(low, high);
        in.of[2 * s] = parts.first;
        in.of[2 * s + 1] = parts.second;
      }
    });
    return in;
  }
  template <Lanes O> static void store_block(const Arrays<T, S>& arrays, std::ptrdiff_t i, const Outputs<V>& out) {
    unrolled<S.destinations>([&](auto d) {
      T* to = arrays.template destination<d>() + i * S.destination_parts;
      if constexpr (S.destination_parts == 1) {
        store<V>(to, out.of[d]);
      } else {
        const Pair<V> parts{out.of[2 * d], out.of[2 * d + 1]};
        const Pair<V> pairs = O == Lanes::any && may_zip ? zip(parts) : interleave(parts);
        store<V>(to, pairs.first);
        store<V>(to + width, pairs.second);
      }
    });
  }
  static void store_tail(const Arrays<T, S>& arrays, std::ptrdiff_t i, int count, const Outputs<V>& out) {
    unrolled<S.destinations>([&](auto d) {
      T* to = arrays.template destination<d>() + i * S.destination_parts;
      if constexpr (S.destination_parts == 1) {
        store_first<V>(to, count, out.of[d]);
      } else {
        const Pair<V> pairs = interleave(Pair<V>{out.of[2 * d], out.of[2 * d + 1]});
        const int n = 2 * count;
        if (n < width) {
          store_first<V>(to, n, pairs.first);
        } else {
          store<V>(to, pairs.first);
          if (n > width) store_first<V>(to + width, n - width, pairs.second);
        }
      }
    });
  }

  /// The marked lanes of a vector, one by one in increasing index.
  [[gnu::noinline]] static void scalar_path(const K& kernel, const Inputs<V>& in, Outputs<V>& out, BitMask marked,
                                            Outcome& outcome) {
    outcome.earned |= may_be_spurious;
    for (BitMask left = marked; left != 0; left &= left - 1) {
      const int i = __builtin_ctz(left);
      Inputs<T> x;
      unrolled<S.inputs()>([&](auto k) { x.of[k] = in.of[k][i]; });
      kelStatus status = kelStatusOk;
      const Outputs<T> y = collect<T>(spread(x, [&](auto... parts) { return kernel.element(parts..., status); }));
      outcome.add(status);
      if constexpr (K::signalling_nan_earns_invalid)
        unrolled<S.inputs()>([&](auto k) {
          if (is_signalling_nan(x.of[k])) outcome.earned |= flag_of(kelStatusDomain);
        });
      unrolled<S.outputs()>([&](auto k) { out.of[k][i] = y.of[k]; });
    }
  }
  static Inputs<V> with_safe_inputs(const Inputs<V>& in, SignMask<V> marked) {
    Inputs<V> tame;
    unrolled<S.inputs()>([&](auto k) { tame.of[k] = select(marked, splat<V>(K::safe_input), in.of[k]); });
    return tame;
  }
  /// Whether the kernel has nan_lanes and nan_result.
  static constexpr bool answers_nans = []<int... I>(std::integer_sequence<int, I...>) {
    return requires(const K& kernel, const Inputs<V>& in) { kernel.nan_lanes(in.of[I]...); };
  }
  (std::make_integer_sequence<int, S.inputs()>{});
  static SignMask<V> nan_lanes(const K& kernel, const Inputs<V>& in) {
    return spread(in, [&](auto... x) { return kernel.nan_lanes(x...); });
  }
  static void answer_nans(const K& kernel, const Inputs<V>& in, Outputs<V>& out, SignMask<V> nans) {
    const auto answer = collect<V>(spread(in, [&](auto... x) { return kernel.nan_result(x...); }));
    unrolled<S.outputs()>([&](auto k) { out.of[k] = select(nans, answer.of[k], out.of[k]); });
  }
  /// The marked lanes of in, and those that the formula leaves undecided, go to element(), but for NaNs.
  static void finish(const K& kernel, const Inputs<V>& in, Outputs<V>& out, BitMask left, Outcome& outcome) {
    if (left == 0) [[likely]]
      return;
    if constexpr (answers_nans) {
      const SignMask<V> nans = nan_lanes(kernel, in);
      answer_nans(kernel, in, out, nans);
      left &= ~movemask(nans);
      if (left == 0) return;
    }
    // Copies in memory for a function, made vector by vector so that the originals stay in registers.
    Inputs<V> x;
    Outputs<V> y;
    unrolled<S.inputs()>([&](auto k) { x.of[k] = in.of[k]; });
    unrolled<S.outputs()>([&](auto k) { y.of[k] = out.of[k]; });
    scalar_path(kernel, x, y, left, outcome);
    unrolled<S.outputs()>([&](auto k) { out.of[k] = y.of[k]; });
  }
  /// One vector, whatever it holds, but for a kernel with a wide formula. Lanes outside `valid` are computed but never
  /// handed over.
  static Outputs<V> one_vector(const K& kernel, const Inputs<V>& in, BitMask valid, Outcome& outcome) {
    ResultTest undecided{};
    if constexpr (K::covers_everything) {
      return formula<V>(kernel, in, undecided);
    } else {
      const SignMask<V> outside = special(kernel, in);
      const BitMask marked = movemask(outside);
      Outputs<V> out = formula<V>(kernel, marked == 0 ? in : with_safe_inputs(in, outside), undecided);
      finish(kernel, in, out, (marked | lanes_of(undecided)) & valid, outcome);
      return out;
    }
  }
  static Outputs<V> one_wide_vector(const K& kernel, const Inputs<V>& in, BitMask valid, Outcome& outcome) {
    const SignMask<V> outside = spread(in, [&](auto... x) { return kernel.wide_special(x...); });
    const Inputs<V> tame = with_safe_inputs(in, outside);
    typename K::template WideResultTest<V> undecided{};
    Outputs<V> out = collect<V>(spread(tame, [&](auto... x) {
      if constexpr (std::is_same_v<decltype(undecided), NoResultTest>)
        return kernel.wide_formula(x...);
      else
        return kernel.wide_formula(x..., undecided);
    }));
    finish(kernel, in, out, (movemask(outside) | lanes_of(undecided)) & valid, outcome);
    return out;
  }
  /// One vector, whatever it holds.
  static Outputs<V> any_vector(const K& kernel, const Inputs<V>& in, Outcome& outcome) {
    if constexpr (K::has_wide_formula) {
      if (any(special(kernel, in))) return one_wide_vector(kernel, in, all_lanes<V>, outcome);
    }
    return one_vector(kernel, in, all_lanes<V>, outcome);
  }
  static constexpr Magnitudes ordinary = [] {
    if constexpr (requires { K::ordinary; })
      return K::ordinary;
    else if constexpr (S.inputs() == 1)
      return Magnitudes{sizeof(T) == 8 ? 0x1p-60 : 0x1p-28, 0x1p60};
    else
      return everyday<T>;
  }();
  /// Lanes, by their sign bits, of other magnitudes. Zero is ordinary for kernels of one source, and for those that may
  /// raise no flag.
  static SignMask<V> not_ordinary(const Inputs<V>& in) {
    return spread(in, [](auto... x) {
      const auto magnitude = [](V x) { return ordinary.both_signs ? abs(x) : x; };
      if constexpr (ordinary.both_signs && (S.inputs() == 1 || spurious_flags<K> == 0))
        return (outside_but_zero(magnitude(x), ordinary.from, ordinary.to) | ...);
      else
        return (outside(magnitude(x), ordinary.from, ordinary.to) | ...);
    });
  }
  /// Unmarked lanes, by their sign bits, for which the formula may raise a flag that is not earned.
  static SignMask<V> noisy(const K& kernel, const Inputs<V>& in) {
    if constexpr (spurious_flags<K> == 0)
      return SignMask<V>{};
    else if constexpr (S.inputs() == 1 && requires { kernel.noisy(in.of[0]); })
      return kernel.noisy(in.of[0]);
    else if constexpr (S.inputs() == 2 && requires { kernel.noisy(in.of[0], in.of[1]); })
      return kernel.noisy(in.of[0], in.of[1]);
    else
      return not_ordinary(in);
  }
  /// compute(in, valid, out) for one vector after the other, the last one perhaps not full, until it says false: how
  /// many elements that were. The formula is there once for both: short calls wait for its code and constants.
  template <class F> static std::ptrdiff_t each_vector(const Arrays<T, S>& arrays, std::ptrdiff_t len, F compute) {
    std::ptrdiff_t i = 0;
    for (; i < len; i += width) {
      const int count = int(len - i);
      const bool full = count >= width;
      const Inputs<V> in = full ? load_block<Lanes::ordered>(arrays, i) : load_tail(arrays, i, count);
      Outputs<V> out;
      if (!compute(in, full ? all_lanes<V> : (1u << count) - 1u, out)) break;
      if (full)
        store_block<Lanes::ordered>(arrays, i, out);
      else
        store_tail(arrays, i, count, out);
    }
    return i;
  }

  /// Whether whole blocks raise no flag that is not earned, as far as their unmarked elements are concerned. Only of a
  /// few blocks: there looking at them twice takes less time than reading the control word.
  static bool quiet_blocks(const K& kernel, const Arrays<T, S>& arrays, std::ptrdiff_t len) {
    if constexpr (spurious_flags<K> == 0) {
      return true;
    } else {
      if (len >= 4 * block) return false;
      SignMask<V> any_noisy{};
      for (std::ptrdiff_t i = 0; i + block <= len; i += block)
        unrolled<K::vectors_in_flight>(
            [&](auto v) { any_noisy |= noisy(kernel, load_block<Lanes::any>(arrays, i + v * width)); });
      return !any(any_noisy);
    }
  }

  // The loops take what they need in registers: at most two sources and two destinations.
  using Run = Outcome(const K&, const T*, const T*, T*, T*, std::ptrdiff_t);

  /// A loop over `count` elements from number i on.
  static Outcome elsewhere(Run* loop, const K& kernel, const Arrays<T, S>& arrays, std::ptrdiff_t i,
                           std::ptrdiff_t count) {
    const Arrays<T, S> from = arrays.from(i);
    return loop(kernel, from.source1, from.source2, from.destination1, from.destination2, count);
  }
  /// For a kernel with a wide formula, elements of which some are not covered by the other.
  [[gnu::noinline, gnu::flatten]] static Outcome run_wide(const K& kernel, const T* source1, const T* source2,
                                                          T* destination1, T* destination2, std::ptrdiff_t len) {
    const Arrays<T, S> arrays{source1, source2, destination1, destination2};
    Outcome outcome{kelStatusOk, may_be_spurious};
    each_vector(arrays, len, [&](const Inputs<V>& in, BitMask valid, Outputs<V>& out) {
      out = one_wide_vector(kernel, in, valid, outcome);
      return true;
    });
    return outcome;
  }

public:
  static constexpr int block = width * K::vectors_in_flight;

  /// Whether few elements may be computed without reading the control word.
  static constexpr bool may_run_unread =
      has_mode_probe && K::mode == Mode::nearest && K::undecided_are_quiet && ordinary.from < ordinary.to;

  /// For few elements, in a mode to nearest with subnormals, whatever exceptions are masked: one vector after the
  /// other, up to the first that may do more than raise inexact. How many elements that were.
  [[gnu::noinline, gnu::flatten]] static std::ptrdiff_t run_unread(const K& kernel, const T* source1, const T* source2,
                                                                   T* destination1, T* destination2,
                                                                   std::ptrdiff_t len) {
    const Arrays<T, S> arrays{source1, source2, destination1, destination2};
    return each_vector(arrays, len, [&](const Inputs<V>& in, BitMask, Outputs<V>& out) {
      const SignMask<V> unusual = spurious_flags<K> == 0 ? not_ordinary(in) : noisy(kernel, in);
      if (any(special(kernel, in) | unusual)) [[unlikely]]
        return false;
      ResultTest undecided{};
      out = formula<V>(kernel, in, undecided);
      return !some(undecided);
    });
  }

  /// For any arrays, and for few elements: one vector after the other.
  [[gnu::noinline, gnu::flatten]] static Outcome run_by_vector(const K& kernel, const T* source1, const T* source2,
                                                               T* destination1, T* destination2, std::ptrdiff_t len) {
    const Arrays<T, S> arrays{source1, source2, destination1, destination2};
    Outcome outcome;
    SignMask<V> spurious{};
    const std::ptrdiff_t done = each_vector(arrays, len, [&](const Inputs<V>& in, BitMask valid, Outputs<V>& out) {
      spurious |= noisy(kernel, in);
      if (K::has_wide_formula && any(special(kernel, in))) [[unlikely]]
        return false;
      out = one_vector(kernel, in, valid, outcome);
      return true;
    });
    if constexpr (K::has_wide_formula) {
      if (done < len) [[unlikely]]
        outcome.add(elsewhere(&run_wide, kernel, arrays, done, len - done));
    }
    if constexpr (spurious_flags<K> != 0) // put together in a register: half of it stored would be waited for
      return {outcome.status, outcome.earned | (any(spurious) ? may_be_spurious : 0)};
    else
      return outcome;
  }

  /// For whole blocks, of a kernel that answers NaNs: where data has missing values most vectors have some, so they
  /// take no branch. Where there are other special elements, a block's length is computed elsewhere.
  [[gnu::noinline, gnu::flatten]] static Outcome run_with_nans(const K& kernel, const T* source1, const T* source2,
                                                               T* destination1, T* destination2, std::ptrdiff_t len) {
    const Arrays<T, S> arrays{source1, source2, destination1, destination2};
    Outcome outcome{kelStatusOk, may_be_spurious};
    for (std::ptrdiff_t i = 0; i < len; i += block) {
      Inputs<V> in[K::vectors_in_flight];
      Outputs<V> out[K::vectors_in_flight];
      SignMask<V> others{};
      ResultTest undecided{};
      unrolled<K::vectors_in_flight>([&](auto v) {
        in[v] = load_block<Lanes::any>(arrays, i + v * width);
        others |= special(kernel, in[v]) & ~nan_lanes(kernel, in[v]);
      });
      if (any(others)) [[unlikely]] {
        outcome.add(elsewhere(other_special_loop, kernel, arrays, i, block));
        continue;
      }
      unrolled<K::vectors_in_flight>([&](auto v) {
        const SignMask<V> nans = nan_lanes(kernel, in[v]);
        out[v] = formula<V>(kernel, with_safe_inputs(in[v], nans), undecided);
        answer_nans(kernel, in[v], out[v], nans);
      });
      if (some(undecided)) [[unlikely]] {
        outcome.add(elsewhere(&run_by_vector, kernel, arrays, i, block));
        continue;
      }
      unrolled<K::vectors_in_flight>([&](auto v) { store_block<Lanes::any>(arrays, i + v * width, out[v]); });
    }
    return outcome;
  }

  /// For many elements: blocks, and by vector those blocks that hold special elements. Flattened: a formula spread over
  /// several functions is still inlined whole, or its vectors would go through memory.
  [[gnu::noinline, gnu::flatten]] static Outcome run(const K& kernel, const T* source1, const T* source2,
                                                     T* destination1, T* destination2, std::ptrdiff_t len) {
    const Arrays<T, S> arrays{source1, source2, destination1, destination2};
    Outcome outcome{kelStatusOk, quiet_blocks(kernel, arrays, len) ? 0 : may_be_spurious};
    std::ptrdiff_t i = 0;
    if constexpr (K::any_overlap) {
      if (arrays.overlaps_within(block * sizeof(T))) [[unlikely]]
        return element_by_element(kernel, arrays, len);
    }
    for (; i + block <= len; i += block) {
      Inputs<V> in[K::vectors_in_flight];
      Outputs<V> out[K::vectors_in_flight];
      typename K::template QuickTest<V> quick{};
      SignMask<V> marked{}; // computed behind the quick test, as nothing before wants it
      ResultTest undecided{};
      unrolled<K::vectors_in_flight>([&](auto v) {
        in[v] = load_block<Lanes::any>(arrays, i + v * width);
        spread(in[v], [&](auto... x) { quick.add(x...); });
        marked |= special(kernel, in[v]);
      });
      if (!K::covers_everything && !quick.passed() && any(marked)) [[unlikely]] {
        // NaNs seldom come alone.
        const std::ptrdiff_t blocks = answers_nans ? std::min<std::ptrdiff_t>((len - i) / block, 8) : 1;
        outcome.add(elsewhere(special_loop, kernel, arrays, i, blocks * block));
        i += (blocks - 1) * block;
        continue;
      }
      unrolled<K::vectors_in_flight>([&](auto v) { out[v] = formula<V>(kernel, in[v], undecided); });
      if (!K::covers_everything && some(undecided)) [[unlikely]] {
        outcome.add(elsewhere(&run_by_vector, kernel, arrays, i, block));
        continue;
      }
      unrolled<K::vectors_in_flight>([&](auto v) { store_block<Lanes::any>(arrays, i + v * width, out[v]); });
    }
    if (i < len) outcome.add(elsewhere(&run_by_vector, kernel, arrays, i, len - i));
    return outcome;
  }

private:
  /// What blocks with special elements go to, and those that hold others than NaNs.
  static constexpr Run* other_special_loop = [] {
    if constexpr (K::has_wide_formula)
      return &run_wide;
    else
      return &run_by_vector;
  }();
  static constexpr Run* special_loop = [] {
    if constexpr (!K::covers_everything && answers_nans)
      return &run_with_nans;
    else
      return other_special_loop;
  }();
  /// The forward loop that defines what overlapping arrays give (real elements, no special ones).
  [[gnu::noinline]] static Outcome element_by_element(const K& kernel, const Arrays<T, S>& arrays, std::ptrdiff_t len) {
    for (std::ptrdiff_t i = 0; i < len; ++i) {
      Inputs<T> x;
      unrolled<S.sources>([&](auto s) { x.of[s] = load<T>(arrays.template source<s>() + i); });
      NoResultTest undecided;
      store<T>(arrays.destination1 + i, formula<T>(kernel, x, undecided).of[0]);
    }
    return {};
  }
};

/// A whole call: both checks in the function's order, then the loop in the kernel's mode.
template <Shape S, class K>
inline kelStatus call(Order order, const K& kernel, const Arrays<typename K::Element, S>& arrays, int len) {
  const bool null = arrays.has_null();
  if (order == Order::PointersFirst && null) return kelStatusNullPtrError;
  if (len < 1) return kelStatusSizeError;
  if (null) return kelStatusNullPtrError;
  using L = Loop<K, S>;
  Arrays<typename K::Element, S> left = arrays;
  std::ptrdiff_t count = std::ptrdiff_t(len) * K::parts_by_themselves;
  if constexpr (L::may_run_unread) {
    if (count < L::block && rounds_to_nearest_with_subnormals()) {
      const std::ptrdiff_t done =
          L::run_unread(kernel, left.source1, left.source2, left.destination1, left.destination2, count);
      if (done >= count) [[likely]]
        return kelStatusOk;
      left = left.from(done);
      count -= done;
    }
  }
  const auto loop = count < L::block && !K::any_overlap ? &L::run_by_vector : &L::run;
  return in_mode<K::mode, spurious_flags<K>>(loop, kernel, left.source1, left.source2, left.destination1,
                                             left.destination2, count);
}

} // namespace kelvm::inline KELVM_BUILD
