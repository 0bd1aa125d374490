// The frame of every function: argument checks, floating-point mode, block loop, scalar path of special lanes, tail,
// status.
//
// Results are bit for bit those of one element alone, so a call may be divided as its length and its elements want:
//
//   run             blocks of several vectors, while they hold ordinary elements
//   run_special     from a block on that holds other elements: the next two, or by vector
//   run_answering   from a block on with NaNs, zeros or infinities that the kernel answers by vectors
//   run_wide        what only a wide formula covers, one vector after the other
//   run_by_vector   everything, one vector after the other: blocks with other special elements, the rest of a call, and
//                   calls shorter than a block
//   run_unread      of those, ordinary elements alone, without a look at the control word (AVX-512)
//   scalar_path     from within run_wide and run_by_vector, an element that the vectors leave
#pragma once

#include "frame/arrays.hpp"
#include "frame/kernel.hpp"
#include "simd/mode_probe.hpp"

#include <cstddef>

namespace kelvm::inline KELVM_BUILD {

enum class Order { CountFirst, PointersFirst };

/// The block loop of kernel K over arrays of shape S. Results are bit for bit those of one element alone, so blocks,
/// single vectors and the tail may divide the array as they like.
template <class K, Shape S> class Loop : protected Elements<typename K::Element, S> {
protected:
  using T = typename K::Element;
  using Memory = Elements<T, S>;
  using Memory::each_vector, Memory::width;
  using typename Memory::Lanes, typename Memory::V;
  template <class U> using Inputs = typename Memory::template Inputs<U>;
  template <class U> using Outputs = typename Memory::template Outputs<U>;

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
    Inputs<V> safe;
    unrolled<S.inputs()>([&](auto k) { safe.of[k] = select(marked, splat<V>(K::safe_input), in.of[k]); });
    return safe;
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
  /// The same with edge_lanes and edge_result.
  static constexpr bool answers_edges = []<int... I>(std::integer_sequence<int, I...>) {
    return requires(const K& kernel, const Inputs<V>& in) { kernel.edge_lanes(in.of[I]...); };
  }
  (std::make_integer_sequence<int, S.inputs()>{});
  static SignMask<V> edge_lanes(const K& kernel, const Inputs<V>& in) {
    if constexpr (answers_edges)
      return spread(in, [&](auto... x) { return kernel.edge_lanes(x...); });
    else
      return SignMask<V>{};
  }
  static void answer_edges(const K& kernel, const Inputs<V>& in, Outputs<V>& out, SignMask<V> edges) {
    const auto answer = collect<V>(spread(in, [&](auto... x) { return kernel.edge_result(x...); }));
    unrolled<S.outputs()>([&](auto k) { out.of[k] = select(edges, answer.of[k], out.of[k]); });
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
    const Inputs<V> safe = with_safe_inputs(in, outside);
    typename K::template WideResultTest<V> undecided{};
    Outputs<V> out = collect<V>(spread(safe, [&](auto... x) {
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
  /// Whether whole blocks raise no flag that is not earned, as far as their unmarked elements are concerned. Only of a
  /// few blocks: there looking at them twice takes less time than reading the control word.
  static bool quiet_blocks(const K& kernel, const Arrays<T, S>& arrays, std::ptrdiff_t len) {
    if constexpr (spurious_flags<K> == 0) {
      return true;
    } else {
      if (len >= 4 * block) return false; // from there on the second look takes as long as reading the control word
      SignMask<V> any_noisy{};
      for (std::ptrdiff_t i = 0; i + block <= len; i += block)
        unrolled<K::vectors_in_flight>([&](auto v) {
          any_noisy |= noisy(kernel, Memory::template load_block<Lanes::any>(arrays, i + v * width));
        });
      return !any(any_noisy);
    }
  }

  // The loops take what they need in registers: at most two sources and two destinations.
  using Run = Outcome(const K&, const T*, const T*, T*, T*, std::ptrdiff_t);
  /// How a loop ended that need not go to the end, and where.
  struct Progress {
    Outcome outcome;
    std::ptrdiff_t elements;
  };

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

  /// For whole blocks, of a kernel that answers NaNs, or other elements as well, the first with some: where data has
  /// missing values most vectors have, so they take no branch. Ends when a few blocks have none, as far as one vector
  /// of each tells. A block with other special elements is computed elsewhere.
  template <bool Edges>
  [[gnu::noinline, gnu::flatten]] static Progress run_answering(const K& kernel, const T* source1, const T* source2,
                                                                T* destination1, T* destination2, std::ptrdiff_t len) {
    const Arrays<T, S> arrays{source1, source2, destination1, destination2};
    Outcome outcome{kelStatusOk, may_be_spurious};
    SignMask<V> seen{}, unreported{};
    const auto report_edges = [&] {
      if constexpr (Edges) {
        if (K::edge_code == kelStatusOk || !any(unreported)) return;
        outcome.add(K::edge_code);
        ownRaiseFpException(K::edge_code);
        unreported = SignMask<V>{};
      }
    };
    int blocks = 0;
    for (std::ptrdiff_t i = 0; i < len; i += block) {
      Inputs<V> in[K::vectors_in_flight], safe[K::vectors_in_flight];
      Outputs<V> out[K::vectors_in_flight];
      typename K::template QuickTest<V> quick{};
      SignMask<V> marked{};
      ResultTest undecided{};
      unrolled<K::vectors_in_flight>([&](auto v) {
        in[v] = Memory::template load_block<Lanes::any>(arrays, i + v * width);
        SignMask<V> answered = nan_lanes(kernel, in[v]);
        if constexpr (Edges) answered |= edge_lanes(kernel, in[v]);
        if (v == 0) seen |= answered;
        safe[v] = with_safe_inputs(in[v], answered);
        spread(safe[v], [&](auto... x) { quick.add(x...); });
        marked |= special(kernel, safe[v]);
      });
      if (!quick.passed() && any(marked)) [[unlikely]] {
        if constexpr (answers_edges && !Edges) {
          SignMask<V> edges{};
          unrolled<K::vectors_in_flight>([&](auto v) { edges |= edge_lanes(kernel, in[v]); });
          if (any(edges)) return {outcome, i};
        }
        report_edges();
        outcome.add(elsewhere(other_special_loop, kernel, arrays, i, block));
        continue;
      }
      unrolled<K::vectors_in_flight>([&](auto v) {
        out[v] = formula<V>(kernel, safe[v], undecided);
        answer_nans(kernel, in[v], out[v], nan_lanes(kernel, in[v]));
        if constexpr (Edges) answer_edges(kernel, in[v], out[v], edge_lanes(kernel, in[v]));
      });
      if (some(undecided)) [[unlikely]] {
        report_edges();
        outcome.add(elsewhere(&run_by_vector, kernel, arrays, i, block));
        continue;
      }
      if constexpr (Edges) unrolled<K::vectors_in_flight>([&](auto v) { unreported |= edge_lanes(kernel, in[v]); });
      unrolled<K::vectors_in_flight>(
          [&](auto v) { Memory::template store_block<Lanes::any>(arrays, i + v * width, out[v]); });
      if (++blocks % 8 == 0) {
        if (!any(seen)) {
          report_edges();
          return {outcome, i + block};
        }
        seen = SignMask<V>{};
      }
    }
    report_edges();
    return {outcome, len};
  }

  /// From a block on that holds special elements, or such that the formula does not decide: that one, or more with
  /// elements that the kernel answers.
  [[gnu::noinline]] static Progress run_special(const K& kernel, const T* source1, const T* source2, T* destination1,
                                                T* destination2, std::ptrdiff_t len) {
    const Arrays<T, S> arrays{source1, source2, destination1, destination2};
    SignMask<V> nans{}, edges{}, marked{};
    unrolled<K::vectors_in_flight>([&](auto v) {
      const Inputs<V> in = Memory::template load_block<Lanes::any>(arrays, v * width);
      if constexpr (answers_nans) nans |= nan_lanes(kernel, in);
      if constexpr (answers_edges) edges |= edge_lanes(kernel, in);
      if constexpr (K::has_wide_formula) marked |= special(kernel, in);
    });
    const std::ptrdiff_t whole = len / block * block;
    if constexpr (answers_edges) {
      if (any(edges)) return run_answering<true>(kernel, source1, source2, destination1, destination2, whole);
    }
    if constexpr (answers_nans) {
      if (any(nans)) return run_answering<false>(kernel, source1, source2, destination1, destination2, whole);
    }
    const auto loop = any(marked) ? other_special_loop : &run_by_vector;
    return {loop(kernel, source1, source2, destination1, destination2, block), block};
  }

  /// For many elements: blocks, and by vector those blocks that hold special elements. Flattened: a formula spread over
  /// several functions is still inlined whole, or its vectors would go through memory.
  [[gnu::noinline, gnu::flatten]] static Outcome run(const K& kernel, const T* source1, const T* source2,
                                                     T* destination1, T* destination2, std::ptrdiff_t len) {
    const Arrays<T, S> arrays{source1, source2, destination1, destination2};
    Outcome outcome{kelStatusOk, quiet_blocks(kernel, arrays, len) ? 0 : may_be_spurious};
    if constexpr (K::any_overlap) {
      if (arrays.overlaps_within(block * sizeof(T))) [[unlikely]]
        return elsewhere(&element_by_element, kernel, arrays, 0, len);
    }
    std::ptrdiff_t i = 0;
    const auto special_blocks = [&] {
      const Arrays<T, S> from = arrays.from(i);
      const Progress progress =
          run_special(kernel, from.source1, from.source2, from.destination1, from.destination2, len - i);
      outcome.add(progress.outcome);
      i += progress.elements - block;
    };
    for (; i + block <= len; i += block) {
      Inputs<V> in[K::vectors_in_flight];
      Outputs<V> out[K::vectors_in_flight];
      typename K::template QuickTest<V> quick{};
      SignMask<V> marked{}; // computed behind the quick test, as nothing before wants it
      ResultTest undecided{};
      unrolled<K::vectors_in_flight>([&](auto v) {
        in[v] = Memory::template load_block<Lanes::any>(arrays, i + v * width);
        spread(in[v], [&](auto... x) { quick.add(x...); });
        marked |= special(kernel, in[v]);
      });
      if (!K::covers_everything && !quick.passed() && any(marked)) [[unlikely]] {
        special_blocks();
        continue;
      }
      unrolled<K::vectors_in_flight>([&](auto v) { out[v] = formula<V>(kernel, in[v], undecided); });
      if (!K::covers_everything && some(undecided)) [[unlikely]] {
        special_blocks();
        continue;
      }
      unrolled<K::vectors_in_flight>(
          [&](auto v) { Memory::template store_block<Lanes::any>(arrays, i + v * width, out[v]); });
    }
    if (i < len) outcome.add(elsewhere(&run_by_vector, kernel, arrays, i, len - i));
    return outcome;
  }

private:
  /// What blocks go to that hold other special elements than NaNs.
  static constexpr Run* other_special_loop = [] {
    if constexpr (K::has_wide_formula)
      return &run_wide;
    else
      return &run_by_vector;
  }();
  /// The forward loop that defines what overlapping arrays give (real elements, no special ones).
  [[gnu::noinline]] static Outcome element_by_element(const K& kernel, const T* source1, const T* source2,
                                                      T* destination1, T* destination2, std::ptrdiff_t len) {
    const Arrays<T, S> arrays{source1, source2, destination1, destination2};
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
