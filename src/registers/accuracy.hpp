// What the files of this folder share: each is compiled twice, for the library of full precision and with KELVM_FAST
// for the faster one.
#pragma once

#ifdef KELVM_FAST
#  define KELVM_ACCURACY_64f A50
#  define KELVM_ACCURACY_32f A21
#else
#  define KELVM_ACCURACY_64f A53
#  define KELVM_ACCURACY_32f A24
#endif

#define KELVM_EXPORTED extern "C" __attribute__((visibility("default")))

#define KELVM_JOINED(a, b, c, d) KELVM_JOINED_AS_IS(a, b, c, d)
#define KELVM_JOINED_AS_IS(a, b, c, d) a##b##c##d

/// The kernel of frame/registers.hpp for a build; what: nothing, one_ or masked_.
#define KELVM_KERNEL(family, type, what, build)                                                                        \
  KELVM_JOINED(kels##family##_##type##_, KELVM_ACCURACY_##type, _##what, build)
