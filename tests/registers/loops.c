/* Loops over the functions of functions.def, for the compiler to vectorise; C and C++. With KELVM_LOOPS by the names of
 * kelvm/loops.h, else by the C library's. */
#ifdef KELVM_LOOPS
#  include <kelvm/loops.h>
#  define CALL(function) kelvm_##function
#else
#  include <math.h>
#  define CALL(function) function
#endif

#ifdef __cplusplus
#  define C extern "C"
#else
#  define C
#endif
#define EXPORTED C __attribute__((visibility("default")))

#define UNARY(T, function)                                                                                             \
  EXPORTED void loop_##function(const T* x, T* y, int n);                                                              \
  void loop_##function(const T* __restrict x, T* __restrict y, int n) {                                                \
    for (int i = 0; i < n; ++i) y[i] = CALL(function)(x[i]);                                                           \
  }
#define BINARY(T, function)                                                                                            \
  EXPORTED void loop_##function(const T* x, const T* y, T* z, int n);                                                  \
  void loop_##function(const T* __restrict x, const T* __restrict y, T* __restrict z, int n) {                         \
    for (int i = 0; i < n; ++i) z[i] = CALL(function)(x[i], y[i]);                                                     \
  }
#ifdef KELVM_LOOPS
#  define TWO_OUTPUTS(T, function)                                                                                     \
    EXPORTED void loop_##function(const T* x, T* y, T* z, int n);                                                      \
    void loop_##function(const T* __restrict x, T* __restrict y, T* __restrict z, int n) {                             \
      _Pragma("omp simd") for (int i = 0; i < n; ++i) CALL(function)(x[i], &y[i], &z[i]);                              \
    }
#else
#  define TWO_OUTPUTS(T, function)
#endif

#ifdef KELVM_LOOPS
#  define KELVM_REGISTERS(name, family, shape) shape(double, name) shape(float, name##f)
#else
#  define KELVM_REGISTERS(name, family, shape)
#endif
#define KELVM_REGISTERS_LIBM(name, family, shape) shape(double, name) shape(float, name##f)
#include "registers/functions.def"
