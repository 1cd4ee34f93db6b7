#include "core/text/nxFileHelper.h"

#include "core/platform/nxFiles.h"

#include <algorithm>
#include <cerrno>
#include <memory>
#include <new>
#include <utility>

namespace
{

bool ReportFailedDirectory(char const* path)
{
    std::printf("Failed to create directory %s, errno: %d\n", path, errno);
    return false;
}

// Puts the stream `maximumDistance` bytes before its end, or at its start if that is nearer.
bool SeekBackFromEnd(std::FILE* stream, unsigned int maximumDistance)
{
    if (std::fseek(stream, 0, SEEK_END) != 0)
        return false;
    long const size = std::ftell(stream);
    if (size < 0)
        return false;
    long const distance = std::min<long>(size, maximumDistance);
    return std::fseek(stream, -distance, SEEK_CUR) == 0;
}

// Where the last line begins in the bytes before `end`.
std::size_t FindLastLine(char const* bytes, std::size_t end)
{
    std::size_t position = end - 1;
    if (bytes[position] == '\n' && position > 0)
        --position;
    while (position > 0 && bytes[position - 1] != '\n')
        --position;
    return position;
}

void RemoveLineEnd(std::string& line)
{
    if (line.empty() || line.back() != '\n')
        return;
    line.pop_back();
    if (!line.empty() && line.back() == '\r')
        line.pop_back();
}

} // namespace

unsigned long long nxFileHelper::GetFileSize(std::string const& path)
{
    nxPlatform::FileStatus status;
    (void)nxPlatform::_stat64i32(path.c_str(), status);
    return static_cast<unsigned long long>(static_cast<long long>(status.size));
}

bool nxFileHelper::DoesDirectoryExist(std::string const& path)
{
    nxPlatform::FileStatus status;
    return nxPlatform::_stat64i32(path.c_str(), status) && status.isDirectory;
}

bool nxFileHelper::DoesDirectoryExist(std::wstring const& path)
{
    nxPlatform::FileStatus status;
    return nxPlatform::_wstat64i32(path.c_str(), status) && status.isDirectory;
}

bool nxFileHelper::CreateDirectoryA(std::string const& path)
{
    return nxPlatform::_mkdir(path.c_str()) || ReportFailedDirectory(path.c_str());
}

bool nxFileHelper::CreateDirectoryA(std::wstring const& path)
{
    if (nxPlatform::_wmkdir(path.c_str()))
        return true;
    int const error = errno;
    std::string const bytes = nxPlatform::GetAsUTF8(path.c_str());
    errno = error;
    return ReportFailedDirectory(bytes.c_str());
}

nxErrorEnum nxFileHelper::GetLastLineOfFile(std::FILE* stream, unsigned int const& maxLength,
                                            std::string& line)
{
    if (maxLength == 0 || stream == nullptr)
        return nxErrorEnum(NX_ERR_INVALID_PARAMETER);
    std::unique_ptr<char[]> const bytes(new (std::nothrow) char[maxLength]);
    if (bytes == nullptr)
        return nxErrorEnum(NX_ERR_INSUFFICIENT_MEMORY);
    if (!SeekBackFromEnd(stream, maxLength))
        return nxErrorEnum(NX_ERR_FILE_SEEK_ERR);
    std::size_t const count = std::fread(bytes.get(), 1, maxLength, stream);
    if (count == 0)
        return nxErrorEnum(NX_ERR_FILE_READ_ERR);
    if (count == 1 && bytes[0] == '\n')
        return nxErrorEnum();
    std::size_t const start = FindLastLine(bytes.get(), count);
    line.assign(bytes.get() + start, count - start);
    RemoveLineEnd(line);
    return nxErrorEnum();
}

void nxFileHelper::RemoveFileTypeSuffix(std::string const& path, std::string& stem, std::string& suffix)
{
    std::size_t position = path.size();
    while (position > 0 && path[position - 1] != '.' && !nxPlatform::IsPathSeparator(path[position - 1]))
        --position;
    if (position == 0 || path[position - 1] != '.')
    {
        stem = path;
        return;
    }
    // Both are cut out before either is stored: one of them may be the path itself.
    std::string front = path.substr(0, position - 1);
    suffix = path.substr(position - 1);
    stem = std::move(front);
}
