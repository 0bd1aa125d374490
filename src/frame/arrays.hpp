// Elements in memory: the arrays of a call, and how vectors of their parts are loaded and stored.
#pragma once

#include "simd/vec.hpp"

#include <cstddef>

namespace kelvm::inline KELVM_BUILD {

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

/// Vectors of a call's elements, one a part: deinterleaved where elements are complex.
template <class T, Shape S> class Elements {
protected:
  using V = Native<T>;
  static constexpr int width = native_lanes<T>;

  template <class U> struct Inputs { U of[S.inputs()]; };
  template <class U> struct Outputs { U of[S.outputs()]; };

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
};

} // namespace kelvm::inline KELVM_BUILD
