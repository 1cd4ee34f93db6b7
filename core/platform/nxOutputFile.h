#pragma once

#include <cstddef>

/// @file
/// Writing a file without a buffer between the caller and the system.

namespace nxPlatform
{

/// A file that is written from its start to its end. Interrupted calls are restarted. Not guarded: one thread at a
/// time. What fails leaves `errno` set.
class OutputFile
{
public:
    OutputFile() = default;
    ~OutputFile();

    OutputFile(OutputFile const&) = delete;
    OutputFile& operator=(OutputFile const&) = delete;

    /// Creates the file, or empties one that exists, as fopen() does with "wb". A program that this process starts
    /// does not inherit it.
    bool Open(char const* path);

    bool IsOpen() const
    {
        return _descriptor != -1;
    }

    /// Writes until all is written or the system refuses.
    /// @return how much was written; `size` means success.
    std::size_t Write(char const* data, std::size_t size);

    /// Takes the last `size` bytes that were written off the file again.
    /// @return false when the file can't be cut, such as a device; it is then as it was.
    bool CutOff(std::size_t size);

    void Close();

private:
    int _descriptor = -1;
};

} // namespace nxPlatform
