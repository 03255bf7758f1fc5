#pragma once

namespace veltora::base {

/// Whether the address sanitizer watches: pools leave each object to the heap then, which knows it.
#if defined(__SANITIZE_ADDRESS__)
inline constexpr bool kSanitized = true;
#elif defined(__has_feature)
inline constexpr bool kSanitized = __has_feature(address_sanitizer);
#else
inline constexpr bool kSanitized = false;
#endif

}  // namespace veltora::base
