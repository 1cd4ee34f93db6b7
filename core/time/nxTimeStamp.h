#pragma once

#include "core/platform/nxExport.h"

#include <string>

class nxDateTime;

/// @file
/// A moment taken cheaply, for log lines above all.

/// Seconds since the epoch and nanoseconds. Every number is an ordinary moment: there is no null and no "no change".
///
/// Taking a stamp is one reading of the clock, without a system call. A plain value: nothing logs, and an instance
/// that threads share is guarded by its owner.
///
/// @code
/// char text[nxTimeStamp::fastStringSize];
/// nxTimeStamp().GetAsStringFast(text, sizeof(text)); // "05Nov26 09:03:01.042.000"
/// @endcode
class NX_CORE_API nxTimeStamp
{
public:
    /// The room that GetAsStringFast() writes to, terminator included.
    static constexpr unsigned long long fastStringSize = 25;

    /// Now, cut to the millisecond.
    nxTimeStamp();
    nxTimeStamp(long long const& seconds, unsigned int const& nanoseconds)
        : _seconds(seconds), _nanoseconds(nanoseconds)
    {
    }
    nxTimeStamp(nxTimeStamp const& other) = default;
    nxTimeStamp& operator=(nxTimeStamp const& other) = default;
    virtual ~nxTimeStamp() = default;

    /// The seconds.
    long long GetAsTimeValue() const
    {
        return _seconds;
    }

    unsigned int GetNanoseconds() const
    {
        return _nanoseconds;
    }

    /// The nanoseconds in whole thousands.
    unsigned int GetMicroseconds() const
    {
        return _nanoseconds / 1000;
    }

    /// The nanoseconds in whole millions.
    unsigned int GetMilliseconds() const
    {
        return _nanoseconds / 1'000'000;
    }

    double GetTotalSecondsAsDouble() const;

    /// The second alone: the fraction is dropped. Seconds 0 and 1 become null and no change.
    nxDateTime GetAsDateTime() const;

    /// @return local time as 15Nov26 09:30:05.123. The slow form, for people.
    std::string GetAsString() const;

    /// Writes local time as 05Nov26 09:03:01.042.000, milliseconds and then microseconds, and a terminating NUL. The
    /// log's form: month names are English whatever the locale, and nothing is allocated.
    ///
    /// @param buffer  must have room for 25 bytes.
    /// @param size    not looked at.
    /// @return 25; 0, with nothing written, for a moment before the epoch or in a year that an `int` can't hold.
    unsigned long long GetAsStringFast(char* buffer, unsigned long long size) const;

private:
    long long _seconds;
    unsigned int _nanoseconds;
};
