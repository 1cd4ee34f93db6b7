#pragma once

/// @file
/// The processor's hint for loops that wait.

namespace nxPlatform
{

/// Lets the processor rest for a moment, so that a loop that waits for another core is not in its way.
inline void Pause()
{
#if defined(__x86_64__) || defined(__i386__)
    __builtin_ia32_pause();
#elif defined(__aarch64__)
    asm volatile("isb"); // "yield" does nothing on most
#endif
}

} // namespace nxPlatform
