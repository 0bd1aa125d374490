// The processor-feature query.
#pragma once

namespace kelvm {

/// Feature mask of SSE4.2.
inline constexpr int feature_sse42 = 128;

/// Non-zero when the processor has the feature of the mask; a mask that names no known feature is never present.
int ownGetFeature(int mask);

} // namespace kelvm
