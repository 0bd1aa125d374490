/* Element types, status codes and the conventions that every function of the library follows.
 *
 * A function is named kels<Family>_<type>_<suffix>. The type is that of the elements: 32f float, 64f double, 32fc
 * Complex32f, 64fc Complex64f. The suffix is the number of correct bits of each result: A11, A21, A24 for floats,
 * A26, A50, A53 for doubles; functions that only have exact results carry none.
 *
 * Arguments: one or two source arrays, one or two destination arrays, and the number of elements, always last. Arrays
 * are contiguous and need no alignment. A destination may be the same array as a source; otherwise source and
 * destination should not overlap. The library allocates nothing, keeps no state and may be called from any number of
 * threads at once.
 *
 * Status: a negative status is an error found before anything was read or written. A positive status is a warning:
 * every element has its result, and the status is the code of the last element (highest index) that earned one. A NaN
 * argument gives a NaN and no warning. An element that earns a warning also raises the IEEE exception flag named
 * below; no other element raises one of these flags.
 *
 * Control words: except where a function says that it computes in the caller's mode, it computes in
 * round-to-nearest with subnormals honoured, whatever the caller has set, and gives the caller's control word back. If
 * it had to change the control word, the sticky exception flags come back as they stood before the call; otherwise
 * the flags that elements raised stay raised.
 *
 * An element's result depends on its value alone: not on its index, its neighbours, the length or the alignment of the
 * arrays, nor on the processor.
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
  kelStatusOverflow = 12,     /**< a result overflows its type; raises overflow */
  kelStatusUnderflow = 17,    /**< a result underflows its type; raises underflow */
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
#else
#  define KELVM_BEGIN_DECLARATIONS
#  define KELVM_END_DECLARATIONS
#endif

#endif
