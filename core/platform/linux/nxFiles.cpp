#include "core/platform/nxFiles.h"

#include <cerrno>
#include <sys/stat.h>

namespace nxPlatform
{

namespace
{

// A wide element is a code point here, and the surrogates are none.
bool IsCharacter(char32_t codePoint)
{
    return codePoint < 0xD800 || (codePoint > 0xDFFF && codePoint <= 0x10FFFF);
}

void AppendAsUTF8(char32_t codePoint, std::string& out)
{
    auto const appendLowSixBits = [&out](char32_t bits)
    { out.push_back(static_cast<char>(0x80 | (bits & 0x3F))); };

    if (codePoint < 0x80)
    {
        out.push_back(static_cast<char>(codePoint));
    }
    else if (codePoint < 0x800)
    {
        out.push_back(static_cast<char>(0xC0 | (codePoint >> 6)));
        appendLowSixBits(codePoint);
    }
    else if (codePoint < 0x10000)
    {
        out.push_back(static_cast<char>(0xE0 | (codePoint >> 12)));
        appendLowSixBits(codePoint >> 6);
        appendLowSixBits(codePoint);
    }
    else
    {
        out.push_back(static_cast<char>(0xF0 | (codePoint >> 18)));
        appendLowSixBits(codePoint >> 12);
        appendLowSixBits(codePoint >> 6);
        appendLowSixBits(codePoint);
    }
}

// Converts as far as the terminating zero; false when an element had to be replaced.
bool ConvertToUTF8(wchar_t const* text, std::string& out)
{
    constexpr char32_t replacement = 0xFFFD;
    bool complete = true;
    for (; *text != L'\0'; ++text)
    {
        char32_t const codePoint = static_cast<char32_t>(*text);
        bool const isCharacter = IsCharacter(codePoint);
        complete = complete && isCharacter;
        AppendAsUTF8(isCharacter ? codePoint : replacement, out);
    }
    return complete;
}

// A name with a replaced element is not the name that was asked for, so it isn't looked for.
bool ConvertPath(wchar_t const* path, std::string& bytes)
{
    if (ConvertToUTF8(path, bytes))
        return true;
    errno = EILSEQ;
    return false;
}

} // namespace

bool _stat64i32(char const* path, FileStatus& status)
{
    struct stat found = {};
    if (::stat(path, &found) != 0)
        return false;
    status.isDirectory = S_ISDIR(found.st_mode);
    status.size = static_cast<int>(static_cast<unsigned int>(found.st_size));
    status.modificationTime = found.st_mtime;
    return true;
}

bool _wstat64i32(wchar_t const* path, FileStatus& status)
{
    std::string bytes;
    return ConvertPath(path, bytes) && _stat64i32(bytes.c_str(), status);
}

bool _mkdir(char const* path)
{
    constexpr mode_t allRights = 0777;
    return ::mkdir(path, allRights) == 0;
}

bool _wmkdir(wchar_t const* path)
{
    std::string bytes;
    return ConvertPath(path, bytes) && _mkdir(bytes.c_str());
}

std::string GetAsUTF8(wchar_t const* text)
{
    std::string out;
    (void)ConvertToUTF8(text, out);
    return out;
}

} // namespace nxPlatform
