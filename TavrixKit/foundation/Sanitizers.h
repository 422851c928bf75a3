#pragma once

namespace tavrix {

/// True if the program is built with the address or the thread sanitizer. Such a program reserves
/// far more address space than it uses, and runs several times slower.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)  // g++
inline constexpr bool hasShadowMemory = true;
#elif defined(__has_feature)  // clang
inline constexpr bool hasShadowMemory =
    __has_feature(address_sanitizer) || __has_feature(thread_sanitizer);
#else
inline constexpr bool hasShadowMemory = false;
#endif

#if defined(__SANITIZE_THREAD__)
inline constexpr bool hasThreadSanitizer = true;
#elif defined(__has_feature)
inline constexpr bool hasThreadSanitizer = __has_feature(thread_sanitizer);
#else
inline constexpr bool hasThreadSanitizer = false;
#endif

}  // namespace tavrix
