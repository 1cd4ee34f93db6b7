#pragma once

#include "core/time/nxTimeStamp.h"

#include <string_view>

/// @file
/// Time stamps in the log file. For the sources of this folder.

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
