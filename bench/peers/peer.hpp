// What the driver and a peer module know of each other. A module holds one contender (a library, or a way of compiling
// plain loops) for one instruction set, in a shared object of its own: nothing that was compiled for a wide set can be
// merged into code that runs elsewhere, and a missing package leaves out one module.
#pragma once

#include <cstddef>

namespace bench {

/// The arrays of one call, untyped. `scalar` points to the exponent of a scalar-power family.
struct Call {
  const void* src1;
  const void* src2;
  const void* scalar;
  void* dst1;
  void* dst2;
  std::ptrdiff_t n;
};

struct Peer {
  const char* family;
  const char* type; // 32f, 64f, 32fc, 64fc
  const char* name; // of the contender: sleef-u10, libm ...
  double ulp;       // what its makers claim; 0 where they claim nothing
  bool naive;       // overflows in between, or an estimate: shown for scale, no bar
  void (*loop)(const Call&);
};

struct Peers {
  const Peer* first;
  int count;
};

} // namespace bench

/// The one symbol of a module.
#define KELVM_PEERS(table)                                                                                             \
  extern "C" __attribute__((visibility("default"))) const bench::Peers kelvm_peers;                                    \
  const bench::Peers kelvm_peers = {table, int(sizeof table / sizeof table[0])};
