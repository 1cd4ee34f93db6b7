#include "core/concurrency/nxThreadSpecificMemoryBuffer.h"

#include "core/concurrency/nxThreadIndex.h"
#include "core/logging/nxLogSite.h"

void nxThreadSpecificMemoryBuffer::_LogAllocation(unsigned int size, unsigned long long address)
{
    NX_LOG(NX_INF, "Allocated thread-specific memory buffer. Thread index: "
                       << nxThreadIndex::GetIndexOfCurrentThread() << ", Size: " << size
                       << ", Address: " << address);
}

void nxThreadSpecificMemoryBuffer::_LogGrowth(unsigned int oldSize, unsigned int newSize)
{
    NX_LOG(NX_INF, "Growing thread-specific memory buffer. Size: " << oldSize << " -> " << newSize);
}
