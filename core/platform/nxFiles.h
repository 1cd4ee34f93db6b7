#pragma once

#include <string>

/// @file
/// Examining files and making directories. Paths are bytes; wide paths reach the system as UTF-8.

namespace nxPlatform
{

/// What _stat64i32() and _wstat64i32() tell of a file.
struct FileStatus
{
    bool isDirectory = false;
    int size = 0;                   ///< Size in bytes, cut to its low 32 bits and read as a signed number.
    long long modificationTime = 0; ///< Last modification, in seconds since the epoch.
};

/// Examines what the path leads to, symbolic links followed.
/// @return false, with `status` left alone and `errno` set, when the path can't be examined.
bool _stat64i32(char const* path, FileStatus& status);

/// The same for a wide path. One that has no UTF-8 form fails with EILSEQ.
bool _wstat64i32(wchar_t const* path, FileStatus& status);

/// Makes one directory, no parents, with all rights that the process's mask leaves.
/// @return false with `errno` set, also when the directory exists already.
bool _mkdir(char const* path);

/// The same for a wide path. One that has no UTF-8 form fails with EILSEQ.
bool _wmkdir(wchar_t const* path);

/// @return the text in UTF-8, with U+FFFD in place of each element that is no character.
std::string GetAsUTF8(wchar_t const* text);

/// @return whether `character` parts the names of a path: "/", and "\" as in paths that came from elsewhere.
constexpr bool IsPathSeparator(char character)
{
    return character == '/' || character == '\\';
}

} // namespace nxPlatform
