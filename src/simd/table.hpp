// Table lookup, by shape: one value, a pair, a row of values that stand together in memory. The table is a constexpr
// array given as a template argument, so that each instruction set can pick its way by the table's size:
//
//   constexpr double table[64][2] = {...};
//   Pair<V> p = lookup_pair<table>(index);     index: Int<V>, every lane within the table
//
// With AVX-512, permutations of tables that fit a few registers are faster everywhere. For others it depends on the
// processor whether loads of what stands together or gather instructions are, a value at a time: `by_gathers`.
#pragma once

#include "simd/vec.hpp"

#include <array>

#include <cstring>

namespace kelvm::inline KELVM_BUILD {

namespace detail {
/// The lanes of an index one by one, two lanes of 32 bits at a time. Compilers take them from the register; through
/// memory they would wait for the whole vector to be stored.
template <class I> class IndexLanes {
  static constexpr int lanes_a_word = 8 / sizeof(Lane<I>);
  std::uint64_t words[sizeof(I) / 8];

public:
  explicit IndexLanes(I index) { std::memcpy(words, &index, sizeof index); }
  IndexLanes(const IndexLanes&) = delete;
  std::size_t operator[](int i) const {
    const std::uint64_t word = words[i / lanes_a_word];
    if constexpr (lanes_a_word == 1) return word;
    return i % 2 == 0 ? std::uint32_t(word) : word >> 32;
  }
};

/// The rows of a table at the lanes of an index. Multiples of a power of two columns are taken of all lanes at once,
/// but for the eight bytes that an address multiplies by.
template <const auto& Table, class I> class RowsAt {
  static constexpr int columns = int(std::size(Table[0])), power_of_two = columns & -columns;
  static constexpr int factor = sizeof(Table[0][0]) == 4 && power_of_two > 1 ? power_of_two / 2 : power_of_two;
  IndexLanes<I> multiple;

public:
  explicit RowsAt(I index) : multiple(index * factor) {}
  const auto* operator[](int i) const { return &Table[0][0] + multiple[i] * (columns / factor); }
};

/// Whether this many values of a row are gathered; loads of more are faster.
template <int N> inline constexpr bool gathers = N <= (vector_bytes == 64 ? 4 : 2) && by_gathers;

/// from[index * Step], lane by lane.
template <int Step, class T, class I> inline auto gathered(const T* from, I index) {
  using V = Vec<T, lanes<I>>;
  return (V)Register<Floating<V>>::gather((const Lane<Floating<V>>*)from, index * Step);
}

#if KELVM_AVX512
/// Values 0 .. N-1 of a column of the table, N a multiple of two registers, permuted: log2(N / lanes) - 1 blends deep.
template <int N, class I, class T> inline Vec<T, lanes<I>> permuted(const T* column, I index) {
  using V = Vec<T, lanes<I>>;
  if constexpr (N == 2 * lanes<I>) {
    const V low = load<V>(column), high = load<V>(column + lanes<I>);
    if constexpr (sizeof(T) == 8)
      return (V)_mm512_permutex2var_pd((__m512d)low, (__m512i)index, (__m512d)high);
    else
      return (V)_mm512_permutex2var_ps((__m512)low, (__m512i)index, (__m512)high);
  } else {
    const V low = permuted<N / 2>(column, index), high = permuted<N / 2>(column + N / 2, index);
    const I bit = splat<I>(N / 2);
    if constexpr (sizeof(T) == 8)
      return (V)_mm512_mask_mov_pd((__m512d)low, _mm512_test_epi64_mask((__m512i)index, (__m512i)bit), (__m512d)high);
    else
      return (V)_mm512_mask_mov_ps((__m512)low, _mm512_test_epi32_mask((__m512i)index, (__m512i)bit), (__m512)high);
  }
}
/// Whether permuting beats loading, or gathering: tables up to so many rows.
template <class T> inline constexpr int most_permuted = sizeof(T) == 4 ? 256 : by_gathers ? 32 : 64;
template <class T, int N>
inline constexpr bool fits_registers = N % (2 * native_lanes<T>) == 0 && N <= most_permuted<T>;

/// A table of rows as columns.
template <const auto& Table, int Rows, int Columns, class T> struct ColumnsOf {
  struct Store {
    alignas(64) T of[Columns][Rows];
  };
  static constexpr Store columns = [] {
    Store s{};
    for (int r = 0; r < Rows; ++r)
      for (int c = 0; c < Columns; ++c) s.of[c][r] = Table[r][c];
    return s;
  }();
};
#endif

/// Two neighbours in memory for each lane, at(0) for lane 0 and so on, transposed. What is loaded for lanes that
/// end up in the same 128 bits is put together there; the builds differ in how many such groups they have.
template <class V, class At> inline Pair<V> load_pairs(At at) {
  using T = Lane<V>;
  constexpr int n = lanes<V>;
  if constexpr (n == 1) {
    return {at(0)[0], at(0)[1]};
  } else if constexpr (sizeof(T) == 8) {
    const auto pair = [&](int i) { return (Vec<double, 2>)_mm_loadu_pd(at(i)); };
    // Lanes i, i + 2, ...: the even ones from 0, the odd ones from 1.
    const auto every_other = [&](int i) {
      if constexpr (n == 2)
        return pair(i);
      else if constexpr (n == 4)
        return join(pair(i), pair(i + 2));
      else
        return join(join(pair(i), pair(i + 2)), join(pair(i + 4), pair(i + 6)));
    };
    const V even = every_other(0), odd = every_other(1);
    return [&]<int... I>(std::integer_sequence<int, I...>) {
      return Pair<V>{__builtin_shufflevector(even, odd, (I / 2 * 2 + I % 2 * n)...),
                     __builtin_shufflevector(even, odd, (I / 2 * 2 + 1 + I % 2 * n)...)};
    }
    (std::make_integer_sequence<int, n>{});
  } else {
    // Pairs of floats travel as doubles, two to 128 bits.
    const auto two = [&](int i) {
      return (Vec<float, 4>)_mm_loadh_pd(_mm_load_sd((const double*)at(i)), (const double*)at(i + 1));
    };
    // Lanes i, i + 1, i + 4, i + 5, ...
    const auto half_of_each_four = [&](int i) {
      if constexpr (n == 4)
        return two(i);
      else if constexpr (n == 8)
        return join(two(i), two(i + 4));
      else
        return join(join(two(i), two(i + 4)), join(two(i + 8), two(i + 12)));
    };
    const V low = half_of_each_four(0), high = half_of_each_four(2);
    return [&]<int... I>(std::integer_sequence<int, I...>) {
      return Pair<V>{__builtin_shufflevector(low, high, (I / 4 * 4 + I % 2 * 2 + I / 2 % 2 * n)...),
                     __builtin_shufflevector(low, high, (I / 4 * 4 + I % 2 * 2 + 1 + I / 2 % 2 * n)...)};
    }
    (std::make_integer_sequence<int, n>{});
  }
}

/// Whether rows of four are loaded whole.
template <class V> inline constexpr bool loads_fours = lanes<V> == 8 || lanes<V> == 16;

/// Four neighbours in memory for each lane, transposed.
template <class V, class At> inline std::array<V, 4> load_fours(At at) {
  constexpr int n = lanes<V>;
  const auto row = [&](int i) { return load<Vec<Lane<V>, 4>>(at(i)); };
  if constexpr (sizeof(Lane<V>) == 8) {
    // Lanes i and i + 2.
    const auto two = [&](int i) { return join(row(i), row(i + 2)); };
    const Pair<V> low = zip(Pair<V>{two(0), two(1)}), high = zip(Pair<V>{two(4), two(5)});
    // 128 bits of one column, then of the other.
    const auto columns = [](V low, V high) {
      return [=]<int... I>(std::integer_sequence<int, I...>) {
        return Pair<V>{__builtin_shufflevector(low, high, (I % 4 / 2 * 4 + I % 2 + I / 4 * 8)...),
                       __builtin_shufflevector(low, high, (I % 4 / 2 * 4 + I % 2 + I / 4 * 8 + 2)...)};
      }
      (std::make_integer_sequence<int, 8>{});
    };
    const auto [c0, c2] = columns(low.first, high.first);
    const auto [c1, c3] = columns(low.second, high.second);
    return {c0, c1, c2, c3};
  } else {
    // Lanes i, i + 4, ...
    const auto every_fourth = [&](int i) {
      if constexpr (n == 8)
        return join(row(i), row(i + 4));
      else
        return join(join(row(i), row(i + 4)), join(row(i + 8), row(i + 12)));
    };
    const Pair<V> even = zip(Pair<V>{every_fourth(0), every_fourth(1)}),
                  odd = zip(Pair<V>{every_fourth(2), every_fourth(3)});
    using Twos = Vec<double, n / 2>;
    const auto [c0, c1] = zip(Pair<Twos>{(Twos)even.first, (Twos)odd.first});
    const auto [c2, c3] = zip(Pair<Twos>{(Twos)even.second, (Twos)odd.second});
    return {(V)c0, (V)c1, (V)c2, (V)c3};
  }
}
} // namespace detail

/// table[index], lane by lane.
template <const auto& Table, class I> inline auto lookup(I index) {
  using T = std::remove_cvref_t<decltype(Table[0])>;
  using V = Vec<T, lanes<I>>;
  static_assert(sizeof(T) == sizeof(Lane<I>));
  if constexpr (lanes<I> == 1) {
    return Table[index];
  } else {
#if KELVM_AVX512
    if constexpr (detail::fits_registers<T, int(std::size(Table))>)
      return detail::permuted<int(std::size(Table))>(&Table[0], index);
#endif
    if constexpr (detail::gathers<1>) return detail::gathered<1>(&Table[0], index);
    const detail::IndexLanes<I> at(index);
    return [&]<int... L>(std::integer_sequence<int, L...>) { return V{Table[at[L]]...}; }
    (std::make_integer_sequence<int, lanes<I>>{});
  }
}

/// An index in the low bits of the lanes, whatever stands above them.
template <class I, int Size = 16> struct LowIndex { I whole; };

template <const auto& Table, class I, int Size> inline auto lookup(LowIndex<I, Size> index) {
  using T = std::remove_cvref_t<decltype(Table[0])>;
  using V = Vec<T, lanes<I>>;
  static_assert(sizeof(T) == sizeof(Lane<I>));
  constexpr int mask = (1 << Size) - 1;
  if constexpr (lanes<I> == 1) {
    return Table[index.whole & mask];
  } else {
#if KELVM_AVX512
    if constexpr (detail::fits_registers<T, int(std::size(Table))>)
      return detail::permuted<int(std::size(Table))>(&Table[0], index.whole); // which takes no more bits than it needs
#endif
    if constexpr (Size != 16 || detail::gathers<1>) return lookup<Table>(I(index.whole & mask));
    const detail::IndexLanes<I> at(index.whole);
    return [&]<int... L>(std::integer_sequence<int, L...>) { return V{Table[std::uint16_t(at[L])]...}; }
    (std::make_integer_sequence<int, lanes<I>>{});
  }
}

/// The pair table[index][0], table[index][1], lane by lane.
template <const auto& Table, class I> inline auto lookup_pair(I index) {
  using T = std::remove_cvref_t<decltype(Table[0][0])>;
  using V = Vec<T, lanes<I>>;
  static_assert(sizeof(T) == sizeof(Lane<I>));
  if constexpr (lanes<I> == 1) {
    return Pair<V>{Table[index][0], Table[index][1]};
  } else {
#if KELVM_AVX512
    constexpr int rows = int(std::size(Table));
    if constexpr (detail::fits_registers<T, rows>) {
      constexpr auto& columns = detail::ColumnsOf<Table, rows, 2, T>::columns.of;
      return Pair<V>{detail::permuted<rows>(columns[0], index), detail::permuted<rows>(columns[1], index)};
    }
#endif
    if constexpr (detail::gathers<2>)
      return Pair<V>{detail::gathered<2>(&Table[0][0], index), detail::gathered<2>(&Table[0][1], index)};
    const detail::RowsAt<Table, I> row(index);
    return detail::load_pairs<V>([&](int i) { return row[i]; });
  }
}

/// Half 0 or 1 of the integers of native float lanes, as an index into a table of doubles.
template <int Half> struct HalfIndex { Int<Native<float>> whole; };

template <const auto& Table, int Half> inline Pair<Native<double>> lookup_pair(HalfIndex<Half> index) {
#if KELVM_AVX512
  return lookup_pair<Table>((Int<Native<double>>)_mm512_maskz_cvtepi32_epi64(0xFF, (__m256i)half<Half>(index.whole)));
#else
  constexpr int n = native_lanes<double>;
  const detail::RowsAt<Table, Int<Native<float>>> row(index.whole);
  return detail::load_pairs<Native<double>>([&](int i) { return row[Half * n + i]; });
#endif
}

/// The row table[index][0 .. M-1], lane by lane: an array of M vectors.
template <const auto& Table, class I> inline auto lookup_row(I index) {
  constexpr int columns = int(std::size(Table[0]));
  using T = std::remove_cvref_t<decltype(Table[0][0])>;
  using V = Vec<T, lanes<I>>;
  static_assert(sizeof(T) == sizeof(Lane<I>));
  std::array<V, columns> values;
  if constexpr (lanes<I> == 1) {
    for (int c = 0; c < columns; ++c) values[c] = Table[index][c];
  } else if constexpr (detail::gathers<columns>) {
    for (int c = 0; c < columns; ++c) values[c] = detail::gathered<columns>(&Table[0][c], index);
  } else {
    const detail::RowsAt<Table, I> row(index);
    if constexpr (columns == 4 && detail::loads_fours<V>) return detail::load_fours<V>([&](int i) { return row[i]; });
    [&]<int... P>(std::integer_sequence<int, P...>) {
      (([&] {
         const Pair<V> two = detail::load_pairs<V>([&](int i) { return row[i] + 2 * P; });
         values[2 * P] = two.first;
         values[2 * P + 1] = two.second;
       }()),
       ...);
    }
    (std::make_integer_sequence<int, columns / 2>{});
    if constexpr (columns % 2 == 1) values[columns - 1] = [&]<int... L>(std::integer_sequence<int, L...>) {
        return V{row[L][columns - 1]...};
      }
    (std::make_integer_sequence<int, lanes<I>>{});
  }
  return values;
}

} // namespace kelvm::inline KELVM_BUILD
