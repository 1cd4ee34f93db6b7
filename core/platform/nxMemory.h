#pragma once

#include <cstddef>

/// @file
/// Memory as the system hands it out.

namespace nxPlatform
{

/// Has the system provide the pages of this memory now and in one go, rather than one by one when each is first written.
/// What the memory holds stays. A hint: a system that can't do it, or has no memory left, leaves it undone.
void ProvidePages(void* memory, std::size_t size);

} // namespace nxPlatform
