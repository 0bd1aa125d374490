// The inner loops of the ufuncs. NumPy hands over a pointer and a step in bytes for each operand; the library wants
// arrays without gaps that do not overlap. Arrays that are so go to the library as they are. Others pass through blocks
// that stay in the first-level cache.
#pragma once

#include "near.hpp"

#include <algorithm>
#include <bit>
#include <cfenv>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <kelvm/kelvm.h>
#include <numpy/npy_common.h>
#include <smmintrin.h>
#include <type_traits>

namespace kelvm_python {

/// The most elements of one call: the library counts in int.
inline constexpr npy_intp longest_call = npy_intp(1) << 30;

/// Bytes of a block, for each operand. Elements that lie this far apart come in shorter blocks: their lines of the
/// cache shall stay, and a short block is read while the one before is written.
inline constexpr npy_intp block_bytes = 4096, short_block_bytes = 1024, far_step = 32;

/// The least number of elements that AVX-512 moves.
inline constexpr npy_intp least_for_registers = 16;

/// How a source lies to a destination, in the order of the elements.
enum class Overlap {
  none,
  same,      ///< the same elements
  ahead,     ///< no element is written before it is read, if a block is read before its results are written
  dependent, ///< an element may be the result of an earlier one, as in a reduction
};

struct Operand {
  char* data;
  npy_intp step;
  npy_intp size;

  const char* begin(npy_intp n) const { return data + std::min<npy_intp>(0, (n - 1) * step); }
  const char* end(npy_intp n) const { return data + std::max<npy_intp>(0, (n - 1) * step) + size; }
  bool without_gaps(npy_intp n) const { return step == size || n == 1; }
};

inline Overlap overlap(const Operand& source, const Operand& destination, npy_intp n) {
  if (source.end(n) <= destination.begin(n) || destination.end(n) <= source.begin(n)) return Overlap::none;
  const npy_intp size = std::max(source.size, destination.size), step = destination.step;
  if (std::abs(step) < size) return n == 1 ? Overlap::ahead : Overlap::dependent;
  if (source.data == destination.data && source.step == step && source.size == destination.size) return Overlap::same;
  const bool ahead = step > 0 ? source.step >= step && source.data >= destination.data
                              : source.step <= step && source.data <= destination.data;
  return ahead ? Overlap::ahead : Overlap::dependent;
}

template <class T> [[gnu::always_inline]] inline T load(const char* from) {
  T x;
  std::memcpy(&x, from, sizeof x);
  return x;
}

/// Four floats with a small step in bytes, side by side, by two loads that stay between the first and the last of them.
template <int step> [[gnu::always_inline]] inline __m128 four_near(const char* from) {
  static_assert(step % 4 == 0 && -12 <= step && step <= 12);
  constexpr int lowest = std::min(0, 3 * step), highest = std::max(0, 3 * step) - 12;
  constexpr int one = step > 0 ? lowest : highest, other = step > 0 ? highest : lowest; // where the loads begin
  return _mm_shuffle_ps(load<__m128>(from + one), load<__m128>(from + other),
                        _MM_SHUFFLE((3 * step - other) / 4, (2 * step - other) / 4, (step - one) / 4, -one / 4));
}

/// Such floats while there are eight. How many were moved.
template <int step> npy_intp gather_by_shuffles(const char* from, npy_intp n, float* to) {
  npy_intp i = 0;
  for (; i + 8 <= n; i += 8) {
    _mm_storeu_ps(to + i, four_near<step>(from + i * step));
    _mm_storeu_ps(to + i + 4, four_near<step>(from + (i + 4) * step));
  }
  return i;
}

inline npy_intp gather_by_shuffles(const char* from, npy_intp step, npy_intp n, float* to) {
  switch (step) {
  case -12:
    return gather_by_shuffles<-12>(from, n, to);
  case -8:
    return gather_by_shuffles<-8>(from, n, to);
  case 8:
    return gather_by_shuffles<8>(from, n, to);
  case 12:
    return gather_by_shuffles<12>(from, n, to);
  default:
    return 0;
  }
}

/// Elements the other way round: the step of one side is their size, that of the other minus that. How many were moved.
template <class T>
[[gnu::always_inline]] inline npy_intp reverse(const char* from, npy_intp from_step, npy_intp n, char* to,
                                               npy_intp to_step) {
  constexpr npy_intp lanes = 16 / sizeof(T), last = lanes - 1;
  const auto move = [=](npy_intp i) {
    const auto x = load<__m128>(from + i * from_step + std::min<npy_intp>(0, last * from_step));
    const auto reversed =
        sizeof(T) == 4 ? _mm_shuffle_ps(x, x, _MM_SHUFFLE(0, 1, 2, 3)) : _mm_shuffle_ps(x, x, _MM_SHUFFLE(1, 0, 3, 2));
    std::memcpy(to + i * to_step + std::min<npy_intp>(0, last * to_step), &reversed, sizeof reversed);
  };
  npy_intp i = 0;
  for (; i + 4 * lanes <= n; i += 4 * lanes) move(i), move(i + lanes), move(i + 2 * lanes), move(i + 3 * lanes);
  return i;
}

/// Elements with a step in bytes, side by side. Four in a round, so that the next address is not a cycle an element.
template <class T> void gather_singly(const char* from, npy_intp step, npy_intp n, T* to) {
  constexpr npy_intp size = sizeof(T);
  const auto go_on = [&](npy_intp moved) { from += moved * step, to += moved, n -= moved; };
  if constexpr (size <= 8)
    if (step == -size) go_on(reverse<T>(from, -size, n, reinterpret_cast<char*>(to), size));
  if constexpr (std::is_same_v<T, float>) go_on(gather_by_shuffles(from, step, n, to));
  const npy_intp three = 3 * step, four = 4 * step;
  for (; n >= 4; n -= 4, from += four, to += 4) {
    const T a = load<T>(from), b = load<T>(from + step), c = load<T>(from + 2 * step), d = load<T>(from + three);
    to[0] = a, to[1] = b, to[2] = c, to[3] = d;
  }
  for (; n > 0; --n, from += step) *to++ = load<T>(from);
}

/// By registers of AVX-512 as far as these go. Apart, and last in gather, for short arrays should not pay for it.
template <class T> [[gnu::noinline]] void gather_many(const char* from, npy_intp step, npy_intp n, T* to) {
  const npy_intp moved = gather_near<sizeof(T)>(from, step, n, reinterpret_cast<char*>(to));
  gather_singly(from + moved * step, step, n - moved, to + moved);
}

template <class T> void gather(const char* from, npy_intp step, npy_intp n, T* to) {
  if constexpr (sizeof(T) <= 8)
    if (n >= least_for_registers && has_avx512) return gather_many(from, step, n, to);
  gather_singly(from, step, n, to);
}

/// One element at least n times, 64 bytes at once.
template <class T> void fill(const char* from, npy_intp n, T* to) {
  constexpr npy_intp together = 64 / sizeof(T);
  T line[together];
  std::fill_n(line, together, load<T>(from));
  for (npy_intp done = 0; done < n; done += together) std::memcpy(to + done, line, sizeof line);
}

/// The results to elements with a step.
template <class T> void scatter_singly(const T* from, npy_intp n, char* to, npy_intp step) {
  constexpr npy_intp size = sizeof(T);
  if constexpr (size <= 8) {
    if (step == -size) {
      const npy_intp moved = reverse<T>(reinterpret_cast<const char*>(from), size, n, to, -size);
      from += moved, to += moved * step, n -= moved;
    }
  }
  const npy_intp three = 3 * step, four = 4 * step;
  for (; n >= 4; n -= 4, from += 4, to += four) {
    std::memcpy(to, from, sizeof(T));
    std::memcpy(to + step, from + 1, sizeof(T));
    std::memcpy(to + 2 * step, from + 2, sizeof(T));
    std::memcpy(to + three, from + 3, sizeof(T));
  }
  for (; n > 0; --n, to += step) std::memcpy(to, from++, sizeof(T));
}

template <class T> [[gnu::noinline]] void scatter_many(const T* from, npy_intp n, char* to, npy_intp step) {
  const npy_intp moved = scatter_near<sizeof(T)>(reinterpret_cast<const char*>(from), n, to, step);
  scatter_singly(from + moved, n - moved, to + moved * step, step);
}

template <class T> void scatter(const T* from, npy_intp n, char* to, npy_intp step) {
  if constexpr (sizeof(T) <= 8)
    if (n >= least_for_registers && has_avx512) return scatter_many(from, n, to, step);
  scatter_singly(from, n, to, step);
}

/// The operands of a loop: args and steps have `sources` operands of type S, then `destinations` of type D.
template <class S, int sources, class D, int destinations> struct Operands {
  static constexpr int all = sources + destinations;
  static constexpr npy_intp size = std::max(sizeof(S), sizeof(D));
  static constexpr npy_intp block = block_bytes / size, short_block = short_block_bytes / size;

  char* const* args;
  const npy_intp* steps;
  bool direct[all]; // the library may use the array as it is
  Overlap worst = Overlap::none;

  /// Where keeps_sources is set, a call's destinations shall never be its sources.
  Operands(char* const* args, npy_intp n, const npy_intp* steps, bool keeps_sources) : args(args), steps(steps) {
    for (int k = 0; k < all; ++k) direct[k] = at(k).without_gaps(n);
    for (int s = 0; s < sources; ++s) {
      for (int d = sources; d < all; ++d) {
        const Overlap found = overlap(at(s), at(d), n);
        worst = std::max(worst, found);
        if (found > Overlap::same || (keeps_sources && found == Overlap::same)) direct[s] = false;
      }
    }
  }

  Operand at(int k) const { return {args[k], steps[k], npy_intp(k < sources ? sizeof(S) : sizeof(D))}; }
  const S* source(int s, npy_intp done) const { return reinterpret_cast<const S*>(args[s] + done * steps[s]); }
  D* destination(int d, npy_intp done) const {
    return reinterpret_cast<D*>(args[sources + d] + done * steps[sources + d]);
  }

  template <class Call> void run(npy_intp n, const Call& call) const {
    if (std::all_of(direct, direct + all, [](bool d) { return d; }))
      as_they_are(n, call);
    else
      through_blocks(n, call);
  }

private:
  template <class Call> void as_they_are(npy_intp n, const Call& call) const {
    const S* src[sources];
    D* dst[destinations];
    for (npy_intp done = 0; done < n; done += longest_call) {
      for (int s = 0; s < sources; ++s) src[s] = source(s, done);
      for (int d = 0; d < destinations; ++d) dst[d] = destination(d, done);
      call(src, dst, int(std::min(longest_call, n - done)));
    }
  }

  /// Apart from the other, for its stack.
  template <class Call> [[gnu::noinline]] void through_blocks(npy_intp n, const Call& call) const {
    alignas(64) S in[sources][block];
    alignas(64) D out[destinations][block];
    const S* src[sources];
    D* dst[destinations];
    const bool far = std::any_of(steps, steps + all, [](npy_intp step) { return std::abs(step) >= far_step; });
    const npy_intp longest = worst == Overlap::dependent ? 1 : far ? short_block : block;
    for (npy_intp done = 0; done < n; done += longest) {
      const npy_intp count = std::min(longest, n - done);
      for (int s = 0; s < sources; ++s) {
        src[s] = direct[s] ? source(s, done) : in[s];
        const bool one_value = steps[s] == 0 && worst <= Overlap::same;
        if (one_value && done == 0)
          fill(args[s], count, in[s]);
        else if (!one_value && !direct[s])
          gather(args[s] + done * steps[s], steps[s], count, in[s]);
      }
      for (int d = 0; d < destinations; ++d) dst[d] = direct[sources + d] ? destination(d, done) : out[d];
      call(src, dst, int(count));
      for (int d = 0; d < destinations; ++d)
        if (const int k = sources + d; !direct[k]) scatter(out[d], count, args[k] + done * steps[k], steps[k]);
    }
  }
};

/// Whether one call does it: arrays without gaps, each destination apart from each source or the same. Short, because
/// the caches of a Python program's short calls are full: what takes longer to see is left to Operands.
template <class S, int sources, class D, int destinations, bool keeps_sources>
[[gnu::always_inline]] inline bool is_one_call(char* const* args, npy_intp n, const npy_intp* steps) {
  if (n <= 0 || n > longest_call) return false;
  for (int k = 0; k < sources + destinations; ++k)
    if (steps[k] != npy_intp(k < sources ? sizeof(S) : sizeof(D)) && n != 1) return false;
  const npy_intp bytes = n * std::max(sizeof(S), sizeof(D));
  for (int s = 0; s < sources; ++s) {
    for (int d = sources; d < sources + destinations; ++d) {
      const npy_intp distance = args[d] - args[s];
      const bool same = sizeof(S) == sizeof(D) && !keeps_sources && distance == 0;
      if (!same && std::abs(distance) < bytes) return false;
    }
  }
  return true;
}

template <class S, int sources, class D, int destinations, class Call>
[[gnu::always_inline]] inline void one_call(char* const* args, npy_intp n, const Call& call) {
  const S* src[sources];
  D* dst[destinations];
  for (int s = 0; s < sources; ++s) src[s] = reinterpret_cast<const S*>(args[s]);
  for (int d = 0; d < destinations; ++d) dst[d] = reinterpret_cast<D*>(args[sources + d]);
  call(src, dst, int(n));
}

/// For other arrays. Apart, for the code of the one call should take few lines of the cache, and no stack: the call
/// comes by value.
template <class S, int sources, class D, int destinations, bool keeps_sources, class Call>
[[gnu::noinline]] void in_pieces(char* const* args, npy_intp n, const npy_intp* steps, Call call) {
  if (n > 0) Operands<S, sources, D, destinations>(args, n, steps, keeps_sources).run(n, call);
}

/// Calls call(sources, destinations, count), with arrays of pointers, until n elements are done.
template <class S, int sources, class D, int destinations, bool keeps_sources = false, class Call>
inline void for_each_piece(char* const* args, npy_intp n, const npy_intp* steps, const Call& call) {
  if (is_one_call<S, sources, D, destinations, keeps_sources>(args, n, steps)) [[likely]]
    one_call<S, sources, D, destinations>(args, n, call);
  else
    in_pieces<S, sources, D, destinations, keeps_sources>(args, n, steps, call);
}

/// Raises overflow and underflow for arguments of a real exponential whose result is an infinity or a zero. The library
/// stores some of these without raising the flag of the warning that it returns.
template <class T> void raise_flags_of_exp(const T* src, int n) {
  using Bits = std::conditional_t<sizeof(T) == 8, uint64_t, uint32_t>;
  constexpr Bits sign = Bits(1) << (8 * sizeof(T) - 1), infinity = std::bit_cast<Bits>(T(__builtin_inf()));
  // The first argument whose result is an infinity, and the last whose result rounds to zero. As integers, because a
  // comparison with a NaN would raise a flag.
  constexpr Bits overflow = std::bit_cast<Bits>(sizeof(T) == 8 ? T(709.7827128933841) : T(88.72284));
  constexpr Bits zero = std::bit_cast<Bits>(sizeof(T) == 8 ? T(745.1332191019412) : T(103.97208));
  bool overflows = false, underflows = false;
  for (int i = 0; i < n; ++i) {
    const Bits x = std::bit_cast<Bits>(src[i]), magnitude = x & ~sign;
    const bool finite = magnitude < infinity;
    overflows |= finite & (x == magnitude) & (magnitude >= overflow);
    underflows |= finite & (x != magnitude) & (magnitude >= zero);
  }
  std::feraiseexcept((overflows ? FE_OVERFLOW : 0) | (underflows ? FE_UNDERFLOW : 0));
}

} // namespace kelvm_python
