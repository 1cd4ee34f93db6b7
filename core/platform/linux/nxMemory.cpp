#include "core/platform/nxMemory.h"

#include <cerrno>
#include <cstdint>
#include <sys/mman.h>

namespace nxPlatform
{

void AdviseLargePages(void* memory, std::size_t size)
{
    auto const address = reinterpret_cast<std::uintptr_t>(memory);
    std::size_t const lead = (largePageSize - address % largePageSize) % largePageSize;
    if (size < lead + largePageSize)
    {
        return;
    }
    int const errnoBefore = errno;
    (void)madvise(static_cast<char*>(memory) + lead, (size - lead) / largePageSize * largePageSize,
                  MADV_HUGEPAGE);
    errno = errnoBefore; // a kernel without large pages refuses
}

} // namespace nxPlatform
