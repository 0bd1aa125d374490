/* SPDX-License-Identifier: MIT */
/* Element types, status codes and the conventions that every function of the library follows.
 *
 * A function is named kels<Family>_<type>_<suffix>. The type is that of the elements: 32f float, 64f double, 32fc
 * Complex32f, 64fc Complex64f. The suffix is the number of correct bits of each result: A11, A21, A24 for floats,
 * A26, A50, A53 for doubles; functions that only have exact results carry none.
 *
 * Arguments: one or two source arrays, one or two destination arrays, and the number of elements, always last. Arrays
 * are contiguous and need no alignment. A destination may be the same array as a source, in every function but CIS,
 * whose results take twice the room of its sources; otherwise source and destination should not overlap, nor two
 * destinations (Add, Sub, Mul and Sqr of reals allow any overlap of sources and destination). The library allocates
 * nothing, keeps no state and may be called from any number of threads at once.
 *
 * Status: a negative status is an error found before anything was read or written. A positive status is a warning:
 * every element has its result, and the status is the code of the last element (highest index) that earned one. An
 * element that earns a warning also raises the IEEE exception flag named below. docs/statuses.md has one table of what
 * each status means for each function.
 *
 * NaN: an argument that is a NaN gives a NaN and no warning; the exceptions stand beside their functions (a power that
 * does not depend on it, an infinity in Hypot, some NaNs in Sin, Cos and SinCos of doubles).
 *
 * Without a warning, the flags invalid, divide-by-zero, overflow and underflow are raised by few elements: invalid by
 * signalling NaNs, as IEEE 754 has it, in most functions; underflow by inexact subnormal results that have no code,
 * parts of complex results among them; and what IEEE operations raise in the functions that are one operation (Add,
 * Sub, Mul, Sqr and Abs of reals, Add and Sub of complex numbers) and in Round. Exp has stored results that raise
 * nothing. Inexact and denormal operand are raised as the computation goes.
 *
 * Control words: except where a function says that it computes in the caller's mode, it computes in round-to-nearest
 * with subnormals honoured, whatever the caller has set, and gives the caller's control word back. If it had to change
 * rounding or the treatment of subnormals, the sticky exception flags come back as they stood before the call;
 * otherwise the flags that elements raised stay raised. Where the caller has unmasked invalid, divide-by-zero, overflow
 * or underflow, the flags that elements raise trap after all results have been written, and nothing else does; in the
 * caller's mode the operations themselves trap.
 *
 * An element's result depends on its value alone: not on its index, its neighbours, the length or the alignment of the
 * arrays, nor, as README.md has it, on the processor; where it may, the function's declaration says so.
 */
#ifndef KELVM_TYPES_H
#define KELVM_TYPES_H

#include <stdint.h>

/** Result of every function: 0, a negative error or a positive warning. */
typedef int32_t kelStatus;

enum {
  kelStatusOk = 0,
  kelStatusSizeError = -6,    /**< the element count is below 1; nothing was written */
  kelStatusNullPtrError = -8, /**< an array pointer is null; nothing was written */
  kelStatusOverflow = 12,     /**< a result, or a part of one, overflows its type; raises overflow */
  kelStatusUnderflow = 17,    /**< a real result underflows its type (a complex one has no code); raises underflow */
  kelStatusSingularity = 18,  /**< a pole: the result is an infinity; raises divide-by-zero */
  kelStatusDomain = 19        /**< an argument outside the domain: the result is a NaN; raises invalid */
};

/** A complex number of two floats. */
typedef struct Complex32f {
  float re;
  float im;
} Complex32f;

/** A complex number of two doubles. */
typedef struct Complex64f {
  double re;
  double im;
} Complex64f;

#if defined(__GNUC__)
#  define KELVM_API __attribute__((visibility("default")))
#else
#  define KELVM_API
#endif

#if defined(__cplusplus)
#  define KELVM_BEGIN_DECLARATIONS extern "C" {
#  define KELVM_END_DECLARATIONS }
#  define KELVM_INLINE inline
#else
#  define KELVM_BEGIN_DECLARATIONS
#  define KELVM_END_DECLARATIONS
#  define KELVM_INLINE static inline
#endif

KELVM_BEGIN_DECLARATIONS

/** A status in words, for people: a string that is never freed or changed. Never null, also for other numbers. */
KELVM_INLINE const char* kelvmStatusText(kelStatus status) {
  switch (status) {
  case kelStatusOk:
    return "no error";
  case kelStatusSizeError:
    return "size error: a wrong number of elements, nothing was written";
  case kelStatusNullPtrError:
    return "null pointer: an array is missing, nothing was written";
  case kelStatusOverflow:
    return "overflow: a result is beyond the largest number of its type";
  case kelStatusUnderflow:
    return "underflow: a result is below the normal range of its type";
  case kelStatusSingularity:
    return "pole: a result is infinite";
  case kelStatusDomain:
    return "domain error: an argument is outside the domain, its result is a NaN";
  default:
    return "unknown status";
  }
}

KELVM_END_DECLARATIONS

#endif
