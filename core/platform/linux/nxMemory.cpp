#include "core/platform/nxMemory.h"

#include <cerrno>
#include <cstdint>
#include <sys/mman.h>
#include <unistd.h>

namespace nxPlatform
{

void ProvidePages(void* memory, std::size_t size)
{
#ifdef MADV_POPULATE_WRITE
    std::size_t const pageSize = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    std::size_t const lead = (pageSize - reinterpret_cast<std::uintptr_t>(memory) % pageSize) % pageSize;
    if (size <= lead)
        return;
    int const errnoBefore = errno;
    (void)madvise(static_cast<char*>(memory) + lead, (size - lead) / pageSize * pageSize,
                  MADV_POPULATE_WRITE);
    errno = errnoBefore; // kernels before 5.14 refuse
#else
    (void)memory;
    (void)size;
#endif
}

} // namespace nxPlatform
