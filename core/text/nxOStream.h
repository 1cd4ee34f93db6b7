#pragma once

#include <cstddef>
#include <string>

/// @file
/// A minimal output stream.

/// Bytes handed on to a writer of its own, without format and without locale.
///
/// @tparam WriterT  has `Append(char const*, std::size_t)` and `std::string const& GetAsString() const`.
template <class WriterT>
class nxOStream
{
public:
    void Write(char const* bytes, std::size_t count)
    {
        _writer.Append(bytes, count);
    }

    /// All that has been written so far.
    std::string const& GetAsString() const
    {
        return _writer.GetAsString();
    }

private:
    WriterT _writer;
};
