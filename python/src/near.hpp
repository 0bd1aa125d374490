// Elements a few places apart, by whole registers of AVX-512: a permutation brings them side by side, or apart. Loads
// and stores have masks, so that what lies between elements is not written, and nothing beyond the array is touched.
#pragma once

#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <immintrin.h>
#include <kelvm/kelvm.h>
#include <numpy/npy_common.h>

namespace kelvm_python {

/// Which of its builds the library is.
inline bool is_build(const char* code) { return std::strncmp(kelvmGetLibVersion()->cpuCode, code, 2) == 0; }

/// Whether the processor has AVX-512 and nobody has turned it off.
inline const bool has_avx512 = is_build("v4");

inline constexpr int register_bytes = 64;

/// A register by the numbers of its lanes, each of `size` bytes.
template <int size> struct Lanes;
template <> struct Lanes<4> {
  typedef int Numbers __attribute__((vector_size(register_bytes)));
  typedef __mmask16 Mask;
  static constexpr Numbers ascending{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15};
};
template <> struct Lanes<8> {
  typedef long long Numbers __attribute__((vector_size(register_bytes)));
  typedef __mmask8 Mask;
  static constexpr Numbers ascending{0, 1, 2, 3, 4, 5, 6, 7};
};

/// As many elements as a register has lanes, `apart` places from one to the next: they are in that many registers.
template <int size, int apart> struct Spacing {
  using Mask = typename Lanes<size>::Mask;
  static constexpr int lanes = register_bytes / size;

  using Masks = std::array<Mask, apart>;

  /// Which lanes of each register are elements.
  static constexpr Masks elements = [] {
    Masks found{};
    for (int place = 0; place < apart * lanes; place += apart) found[place / lanes] |= Mask(1 << place % lanes);
    return found;
  }();
  /// Which elements are in each register, when they are side by side.
  template <bool backwards>
  static constexpr Masks from_registers = [] {
    Masks found{};
    for (int i = 0; i < lanes; ++i) found[i * apart / lanes] |= Mask(1 << (backwards ? lanes - 1 - i : i));
    return found;
  }();
};

/// Elements of `size` bytes, `apart` places from one to the next in either direction, side by side, while there are as
/// many as a register has lanes. How many were moved.
template <int size, int apart>
__attribute__((target("avx512f"))) npy_intp gather_near(const char* from, npy_intp step, npy_intp n, char* to) {
  using S = Spacing<size, apart>;
  const bool backwards = step < 0;
  const auto ascending = Lanes<size>::ascending;
  const auto place =
      __m512i((backwards ? S::lanes - 1 - ascending : ascending) * apart); // counts in its low bits alone
  const auto here = backwards ? S::template from_registers<true> : S::template from_registers<false>;
  if (backwards) from += (S::lanes - 1) * step;
  npy_intp i = 0;
  for (; i + S::lanes <= n; i += S::lanes, from += S::lanes * step) {
    __m512i all{};
#pragma GCC unroll 4
    for (int r = 0; r < apart; ++r) {
      const char* part = from + r * register_bytes;
      if constexpr (size == 4)
        all = _mm512_mask_permutexvar_epi32(all, here[r], place, _mm512_maskz_loadu_epi32(S::elements[r], part));
      else
        all = _mm512_mask_permutexvar_epi64(all, here[r], place, _mm512_maskz_loadu_epi64(S::elements[r], part));
    }
    std::memcpy(to + i * size, &all, sizeof all);
  }
  return i;
}

/// Elements that are side by side to places `apart` from one to the next, likewise.
template <int size, int apart>
__attribute__((target("avx512f"))) npy_intp scatter_near(const char* from, npy_intp n, char* to, npy_intp step) {
  using S = Spacing<size, apart>;
  const bool backwards = step < 0;
  __m512i element[apart]; // of each lane
#pragma GCC unroll 4
  for (int r = 0; r < apart; ++r) {
    const auto number = (Lanes<size>::ascending + r * S::lanes) * (256 / apart + 1) >> 8; // divided by apart
    element[r] = __m512i(backwards ? S::lanes - 1 - number : number);
  }
  if (backwards) to += (S::lanes - 1) * step;
  npy_intp i = 0;
  for (; i + S::lanes <= n; i += S::lanes, to += S::lanes * step) {
    __m512i all;
    std::memcpy(&all, from + i * size, sizeof all);
#pragma GCC unroll 4
    for (int r = 0; r < apart; ++r) {
      constexpr auto everywhere = typename S::Mask(-1);
      char* part = to + r * register_bytes;
      if constexpr (size == 4)
        _mm512_mask_storeu_epi32(part, S::elements[r], _mm512_maskz_permutexvar_epi32(everywhere, element[r], all));
      else
        _mm512_mask_storeu_epi64(part, S::elements[r], _mm512_maskz_permutexvar_epi64(everywhere, element[r], all));
    }
  }
  return i;
}

/// Elements with a step that are moved quicker like this than one by one, in whichever cache they are; others stay.
template <int size> npy_intp gather_near(const char* from, npy_intp step, npy_intp n, char* to) {
  switch (std::abs(step)) {
  case size:
    return gather_near<size, 1>(from, step, n, to);
  case 2 * size:
    return gather_near<size, 2>(from, step, n, to);
  case 4 * size:
    if constexpr (size == 4) return gather_near<size, 4>(from, step, n, to);
  }
  return 0;
}
template <int size> npy_intp scatter_near(const char* from, npy_intp n, char* to, npy_intp step) {
  switch (std::abs(step)) {
  case size:
    return scatter_near<size, 1>(from, n, to, step);
  case 2 * size:
    return scatter_near<size, 2>(from, n, to, step);
  case 3 * size:
    return scatter_near<size, 3>(from, n, to, step);
  case 4 * size:
    if constexpr (size == 4) return scatter_near<size, 4>(from, n, to, step);
  }
  return 0;
}

} // namespace kelvm_python
