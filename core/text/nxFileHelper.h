#pragma once

#include "core/platform/nxExport.h"
#include "core/vocabulary/nxErrorEnum.h"

#include <cstdio>
#include <string>

class nxDateTime;

/// @file
/// Small questions to the file system.

/// Static functions without state; as safe between threads as the file system is. Only CreateDirectoryA() prints,
/// since the log, which makes its own directory through it, can't carry the line.
///
/// @code
/// if (!nxFileHelper::DoesDirectoryExist(directory) && !nxFileHelper::CreateDirectoryA(directory))
///     return false;
/// @endcode
class NX_CORE_API nxFileHelper
{
public:
    /// @return the size in bytes; 0 when the file can't be examined. The size is cut to 32 bits and widened with its
    ///         sign, so a file of 2 GiB and above gives another number: one of 3,000,000,000 bytes gives
    ///         18,446,744,072,414,584,320.
    static unsigned long long GetFileSize(std::string const& path);

    /// @return the last modification in whole seconds; NULL when the file can't be examined.
    static nxDateTime GetModificationTime(std::string const& path);

    /// @return true for a directory, false for anything else and for what can't be examined. Wide paths reach the
    ///         system as UTF-8.
    static bool DoesDirectoryExist(std::string const& path);
    static bool DoesDirectoryExist(std::wstring const& path);

    /// Makes one directory, no parents.
    /// @return false, after a line on standard output, when the system refuses, also because it exists already.
    static bool CreateDirectoryA(std::string const& path);
    static bool CreateDirectoryA(std::wstring const& path);

    /// Reads the last line of a file without reading the rest.
    ///
    /// A line feed at the very end is passed over, one: a file that ends in two gives the line before them with the
    /// line feed between. The line comes without its own LF or CR LF. Nobody else may use the stream meanwhile; its
    /// position is at the end of what was read afterwards.
    ///
    /// @param maxLength  how far back to look, in bytes; a longer line comes back cut at the front.
    /// @param line       left alone on failure, and by a file that holds one line feed only.
    /// @return OK; NX_ERR_INVALID_PARAMETER for no stream or a length of 0; NX_ERR_INSUFFICIENT_MEMORY;
    ///         NX_ERR_FILE_SEEK_ERR when the stream can't be positioned; NX_ERR_FILE_READ_ERR when nothing could be
    ///         read, as from an empty file.
    static nxErrorEnum GetLastLineOfFile(std::FILE* stream, unsigned int const& maxLength, std::string& line);

    /// Splits `name.log` into `name` and `.log`, at the last point behind the last path separator.
    /// @param stem    all of `path` when there is no such point.
    /// @param suffix  is left alone then.
    static void RemoveFileTypeSuffix(std::string const& path, std::string& stem, std::string& suffix);

private:
    nxFileHelper() = delete;
    nxFileHelper(nxFileHelper const& other) = delete;
    nxFileHelper& operator=(nxFileHelper const& other) = delete;
    ~nxFileHelper() = delete;
};
