#pragma once

#include "core/platform/nxExport.h"

#include <cstddef>

/// @file
/// Where rows of delimited text keep their columns. For nxCSVFileRow and nxCSVFileReader.

/// Memory for the columns of rows: usually the heap's, but while a large file is read blocks are cut from regions whose
/// pages the system has provided in one go, because most of the time that such a file takes would go into faulting in the
/// pages of its rows, one by one.
///
/// Each block knows where it came from. So rows are plain values: any of them may be copied, moved and destroyed on any
/// thread and outlive the reader. A region goes with the last of its blocks.
class NX_CORE_API nxCSVRowMemory
{
public:
    nxCSVRowMemory() = delete;

    /// @return `size` bytes, aligned for a pointer. Throws std::bad_alloc.
    static void* Allocate(std::size_t size);
    static void Free(void* memory) noexcept;

    class Region;

    /// While it lives, the calling thread's blocks come from regions.
    class Batch
    {
    public:
        /// @param isWanted  false makes a guard without effect.
        explicit Batch(bool isWanted);
        ~Batch();

        Batch(Batch const&) = delete;
        Batch& operator=(Batch const&) = delete;

    private:
        friend class nxCSVRowMemory;
        void* _Take(std::size_t size);

        Region* _region = nullptr; // the one that blocks are cut from
        std::size_t _used = 0;     // of that region, in bytes
        Batch* _outer = nullptr;   // of a reading that this one takes place within
        bool _isWanted;
    };
};
