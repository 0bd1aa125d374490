/* SPDX-License-Identifier: MIT */
/* Which build of the library is loaded. */
#ifndef KELVM_VERSION_H
#define KELVM_VERSION_H

#include "kelvm/types.h"

KELVM_BEGIN_DECLARATIONS

/** Describes one build. Owned by the library; never free or change it. */
typedef struct VersionRecord {
  int32_t versionMajor;
  int32_t versionMinor;
  int32_t buildMajor;
  int32_t buildNumber;
  char cpuCode[4];         /**< "y8" SSE4.1, "v3" AVX2, "v4" AVX-512; padded with zeros */
  const char* libraryName; /**< ends in "+" where the processor has SSE4.2 */
  const char* versionText;
  const char* buildDate;
} VersionRecord;

/** The record of the build that is loaded. Never null; may be called from any thread at any time. */
KELVM_API const VersionRecord* kelvmGetLibVersion(void);

KELVM_END_DECLARATIONS

#endif
