#pragma once

#include <algorithm>
#include <cstddef>
#include <string>

/// @file
/// The growing buffer under nxOStream.

/// Bytes gathered in one buffer, which grows to the larger of twice its capacity and what is needed.
class nxSimpleAsciiStringWriter
{
public:
    void Append(char const* bytes, std::size_t count)
    {
        if (_buffer.size() + count > _buffer.capacity())
            _buffer.reserve(std::max(2 * _buffer.capacity(), _buffer.size() + count));
        _buffer.append(bytes, count);
    }

    std::string const& GetAsString() const
    {
        return _buffer;
    }

private:
    std::string _buffer;
};
