#pragma once

/// @file
/// What a test has to know of the build that it runs in: some tests can't be shown under a sanitizer.

#if defined(__has_feature)
#define NX_HAS_FEATURE(feature) __has_feature(feature)
#else
#define NX_HAS_FEATURE(feature) 0
#endif

#if defined(__SANITIZE_ADDRESS__) || NX_HAS_FEATURE(address_sanitizer)
#define NX_ADDRESS_SANITIZER 1
#else
#define NX_ADDRESS_SANITIZER 0
#endif
#if defined(__SANITIZE_THREAD__) || NX_HAS_FEATURE(thread_sanitizer)
#define NX_THREAD_SANITIZER 1
#else
#define NX_THREAD_SANITIZER 0
#endif

constexpr bool underAddressSanitizer = NX_ADDRESS_SANITIZER;
constexpr bool underThreadSanitizer = NX_THREAD_SANITIZER;
constexpr bool underSanitizer = underAddressSanitizer || underThreadSanitizer;
