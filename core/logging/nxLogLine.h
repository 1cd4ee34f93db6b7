#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// @file
/// The form of a line in the log file. For the sources of this folder.

class nxLog;

/// The fields of a line: "[level][stamp][index] message [file:number]" and what ends it.
struct nxLogLine
{
    /// The line of a statement, which must stay, as `stamp` must.
    static nxLogLine Of(nxLog const& log, std::string_view stamp);

    /// A statement's message as a C string: what stands behind a zero byte isn't printed. Empty for a statement that was
    /// moved from.
    static char const* GetMessage(nxLog const& log);

    std::string_view level;
    std::string_view stamp;
    bool hasThreadIndex = false;
    unsigned int threadIndex = 0;
    std::string_view message;
    std::string_view sourceFile;
    unsigned int lineNumber = 0;
    std::string_view end = "\r\n";

    /// The most bytes that Write() writes.
    std::size_t GetMostSize() const;

    /// @return the end of what was written.
    char* Write(char* out) const;

    /// @return the whole line.
    std::string GetText() const;
};
