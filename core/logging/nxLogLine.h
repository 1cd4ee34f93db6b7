#pragma once

#include "core/time/nxTimeStamp.h"

#include <cstddef>
#include <string_view>

/// @file
/// The form of a line in the log file. For the sources of this folder.

/// The fields of a line: "[level][stamp][index] message [file:number]" and what ends it.
struct nxLogLine
{
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
};

/// Prints time stamps in the form of the log file. Stamps of one second share its text, for which the calendar is
/// asked once.
class nxLogStampText
{
public:
    /// @return as "15Nov26 09:30:05.123.000"; nothing for a stamp that has no calendar form. Valid until the next call.
    std::string_view Get(nxTimeStamp const& stamp);

private:
    char _text[nxTimeStamp::fastStringSize] = {};
    long long _seconds = 0;
    bool _isSet = false;
};
