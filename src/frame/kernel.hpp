// What a kernel is: the arithmetic of a function, of which the frame (frame/frame.hpp) makes a call.
//
// A kernel is a struct (stateless, but for the scalar-power shape) that derives from KernelDefaults and has
//
//   using Element = double;         the type of a lane: of the parts, where elements are complex
//   template <class V> static SignMask<V> special(V x)
//                                   the lanes that formula does not cover, by their sign bits; it may raise inexact,
//                                   and invalid for a signalling NaN, no other flag
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
// Quiet NaNs are no ordinary elements and yet common: missing values. What they give is told by element, and for whole
// vectors by nan_result; nan_lanes are those elements that give it, and none that raise a flag. Kernels of one real
// source get both from KernelDefaults, others may define them, mostly by quiet_nans of their operands. Where a
// ResultTest tells what is special, it may leave NaNs decided that the formula gives as element does, or leave them
// undecided.
//
// Zeros and infinities are common as well: empty bins, masked weights. Where a kernel marks those that are, it may have
// edge_lanes and edge_result, as nan_lanes and nan_result, for such elements as have one code, edge_code (some bases
// stand in frame/edges.hpp).
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
/// Small powers of such numbers, exponentials of them, and products of those with remainders of a rounding are all far
/// above the smallest normal number.
template <class T>
inline constexpr Magnitudes everyday = sizeof(T) == 4 ? Magnitudes{0x1p-10, 8} : Magnitudes{0x1p-20, 512};
/// Of kernels for which no interval says what raises no flag.
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

template <class K>
inline constexpr unsigned
    spurious_flags = (K::spurious_underflow ? flag_of(kelStatusUnderflow) : 0) |
                     (K::spurious_exceptions ? flag_of(kelStatusDomain) | flag_of(kelStatusOverflow) : 0);

} // namespace kelvm::inline KELVM_BUILD
