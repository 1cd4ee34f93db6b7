#pragma once

#include <cstddef>

/// @file
/// Memory as the system hands it out.

namespace nxPlatform
{

/// The size and alignment at which the system can hand out memory in large pages.
inline constexpr std::size_t largePageSize = 2 * 1024 * 1024;

/// Asks the system to back this memory with large pages where it can, before it is first written: a page is then
/// faulted in once for 2 MiB rather than for 4 KiB. Only the aligned part is meant. A hint, which is never refused.
void AdviseLargePages(void* memory, std::size_t size);

} // namespace nxPlatform
