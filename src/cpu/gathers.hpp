// Which way of reading tables suits the processor.
#pragma once

#define KELVM_HIDDEN __attribute__((visibility("hidden")))
/// For functions that run while the loader is at work: they use no variables, call nothing of other libraries, and no
/// sanitizer adds what does.
#define KELVM_WHILE_LOADING KELVM_HIDDEN __attribute__((no_sanitize("address", "thread", "undefined")))

namespace kelvm {

/// Whether gather instructions beat loads lane by lane: on Intel's cores since Golden Cove, which have AVX512-FP16 or
/// AVX-VNNI. Older ones pay for a security mitigation, and those of other makers are slow at gathers.
KELVM_WHILE_LOADING bool prefers_gathers();

} // namespace kelvm
