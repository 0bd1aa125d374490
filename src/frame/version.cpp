#include "kelvm/version.h"

#include "cpu/features.hpp"
#include "simd/isa.hpp"

// The name of the library carries the build's code.
#define KELVM_LIBRARY(code) "kelvm" code "-6.0.dll"
#define KELVM_RECORD(name)                                                                                             \
  { 6, 0, 167, 628, KELVM_BUILD_CODE, name, "6.0 Update 2 build 167.41", "Feb 23 2009" }

extern "C" const VersionRecord* kelvmGetLibVersion(void) {
  static const VersionRecord plain = KELVM_RECORD(KELVM_LIBRARY(KELVM_BUILD_CODE));
  static const VersionRecord with_feature = KELVM_RECORD(KELVM_LIBRARY(KELVM_BUILD_CODE) "+");
  return kelvm::ownGetFeature(kelvm::feature_sse42) ? &with_feature : &plain;
}
