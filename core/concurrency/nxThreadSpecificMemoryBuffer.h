#pragma once

#include "core/platform/nxExport.h"

#include <cstdint>
#include <cstdlib>

/// @file
/// A block of memory for one thread.

/// Raw memory that grows by equal steps and belongs to one thread, which also constructs it: the thread's
/// index is in the log line about the first allocation. There is no lock and no thread-local storage; that
/// the buffer is used by its thread alone is up to the host.
///
/// Every allocation is logged at level Info, so that a log tells how often the initial size proved too small.
/// Running out of memory is not reported: the buffer is then null, the size that which was asked for, and the
/// old block lost. A size of zero is a null buffer after a change of size. Sizes wrap around at 32 bits.
class NX_CORE_API nxThreadSpecificMemoryBuffer
{
public:
    /// @param initialSize  in bytes; also the step by which the buffer grows.
    explicit nxThreadSpecificMemoryBuffer(unsigned int const& initialSize) : _initialSize(initialSize)
    {
        _Initialise();
    }

    ~nxThreadSpecificMemoryBuffer()
    {
        std::free(_buffer);
    }

    /// The block. It may move whenever the size changes.
    void* GetBuffer()
    {
        return _buffer;
    }

    /// The size in bytes.
    unsigned int GetSize() const
    {
        return _size;
    }

    /// How many times the size was changed, to a smaller or to the same one included.
    unsigned int GetGrowCount() const
    {
        return _growCount;
    }

    /// Adds one step. What the buffer holds is kept.
    void GrowBuffer()
    {
        _Resize(_size + _initialSize);
    }

    /// Sets the size, which may be smaller than the present one. What fits is kept.
    void GrowBufferToSize(unsigned int const& newSize)
    {
        _Resize(newSize);
    }

private:
    nxThreadSpecificMemoryBuffer() : _initialSize(0)
    {
    }
    nxThreadSpecificMemoryBuffer(nxThreadSpecificMemoryBuffer const&) = delete;
    nxThreadSpecificMemoryBuffer& operator=(nxThreadSpecificMemoryBuffer const&) = delete;

    void _Initialise()
    {
        _size = _initialSize;
        _buffer = std::malloc(_size);
        _growCount = 0;
        _LogAllocation(_size, reinterpret_cast<std::uintptr_t>(_buffer));
    }

    void _Resize(unsigned int newSize)
    {
        unsigned int const oldSize = _size;
        _size = newSize;
        if (_size == 0)
        {
            // What realloc() does with no size is each system's own choice.
            std::free(_buffer);
            _buffer = nullptr;
        }
        else
        {
            _buffer = std::realloc(_buffer, _size);
        }
        _LogGrowth(oldSize, _size);
        ++_growCount;
    }

    // The log lies above this folder, so its statements are not in a header.
    static void _LogAllocation(unsigned int size, unsigned long long address);
    static void _LogGrowth(unsigned int oldSize, unsigned int newSize);

    void* _buffer = nullptr;
    unsigned int _size = 0;
    unsigned int _growCount = 0;
    unsigned int _initialSize;
};
