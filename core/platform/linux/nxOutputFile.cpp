#include "core/platform/nxOutputFile.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace nxPlatform
{

OutputFile::~OutputFile()
{
    Close();
}

bool OutputFile::Open(char const* path)
{
    // What fopen() grants; the process's mask takes away from it.
    constexpr mode_t rights = 0666;

    Close();
    do
    {
        _descriptor = open(path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, rights);
    } while (_descriptor == -1 && errno == EINTR);
    return IsOpen();
}

std::size_t OutputFile::Write(char const* data, std::size_t size)
{
    std::size_t written = 0;
    while (written < size)
    {
        ssize_t const count = write(_descriptor, data + written, size - written);
        if (count > 0)
            written += static_cast<std::size_t>(count);
        else if (count == 0 || errno != EINTR)
            break;
    }
    return written;
}

bool OutputFile::CutOff(std::size_t size)
{
    off_t const end = lseek(_descriptor, 0, SEEK_CUR);
    if (end < static_cast<off_t>(size))
        return false;
    off_t const newEnd = end - static_cast<off_t>(size);
    return ftruncate(_descriptor, newEnd) == 0 && lseek(_descriptor, newEnd, SEEK_SET) == newEnd;
}

void OutputFile::Close()
{
    if (IsOpen())
    {
        // Not repeated when interrupted: the descriptor is gone by then and may be another thread's.
        (void)close(_descriptor);
        _descriptor = -1;
    }
}

} // namespace nxPlatform
