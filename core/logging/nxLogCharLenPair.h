#pragma once

#include "core/platform/nxExport.h"

/// @file
/// Characters of a known length, for the log.

/// Points to characters that need no terminator and are not owned; they have to stay until the pair is logged.
///
/// @code
/// log << nxLogCharLenPair(field, fieldLength);
/// @endcode
class NX_CORE_API nxLogCharLenPair
{
public:
    nxLogCharLenPair(char const* buffer, unsigned long long const& length) : _buffer(buffer), _length(length)
    {
    }

    nxLogCharLenPair(nxLogCharLenPair const& other) = default;
    nxLogCharLenPair& operator=(nxLogCharLenPair const& other) = default;
    nxLogCharLenPair& operator=(nxLogCharLenPair&& other) = default;

    char const* GetUnterminatedCharBuffer() const
    {
        return _buffer;
    }

    unsigned long long GetLength() const
    {
        return _length;
    }

private:
    nxLogCharLenPair() = default;

    char const* _buffer = nullptr;
    unsigned long long _length = 0;
};
