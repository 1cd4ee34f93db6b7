#pragma once

#include "core/platform/nxExport.h"
#include "core/vocabulary/nxErrorEnum.h"
#include "core/vocabulary/nxInitalizers.h"
#include "core/vocabulary/nxValueStatusEnum.h"

#include <string>
#include <tuple>

/// @file
/// A time of day.

/// A wall-clock time without a date or zone: hour, minute and second, or null, or no change.
///
/// Only the constructors, assignment of a valid time and the two `SetFrom...` operations make a time valid. SetHour(),
/// SetMinute() and SetSecond() leave the status: on a null they store a number that GetHour() and its kin don't show,
/// though GetAsHHMMSS() and the comparisons do.
///
/// A plain value: nothing throws or logs, and an instance that threads share is guarded by its owner.
///
/// @code
/// nxTime opening;
/// if (!opening.SetFromString("09:30").IsOK())
///     return;
/// opening.GetAsString(); // "09:30:00"
/// @endcode
class NX_CORE_API nxTime
{
public:
    /// Midnight, valid.
    nxTime() noexcept : _status(NX_VALID)
    {
    }

    nxTime(nxNullInitalizer) noexcept : _status(NX_NULL)
    {
    }

    nxTime(nxNoChangeInitalizer) noexcept : _status(NX_NOCHANGE)
    {
    }

    /// A time that isn't valid gives its status alone: a copy of it has three zeros, while one that it is assigned to
    /// keeps its numbers, which GetAsHHMMSS() and the comparisons go on to see.
    nxTime(nxTime const& other) noexcept : _status(other._status)
    {
        if (_IsValid())
            _Set(other._hour, other._minute, other._second);
    }

    nxTime& operator=(nxTime const& other) noexcept
    {
        _status = other._status;
        if (_IsValid())
            _Set(other._hour, other._minute, other._second);
        return *this;
    }

    static nxTime GetNullInstance() noexcept
    {
        return nxTime(nxNullInitalizer{});
    }

    bool IsNull() const noexcept
    {
        return _status == NX_NULL;
    }

    void SetNull() noexcept
    {
        _Set(0, 0, 0);
        _status = nxValueStatusEnum(NX_NULL);
    }

    /// @return the number; 0 unless the time is valid.
    unsigned int GetHour() const noexcept
    {
        return _IsValid() ? _hour : 0;
    }

    unsigned int GetMinute() const noexcept
    {
        return _IsValid() ? _minute : 0;
    }

    unsigned int GetSecond() const noexcept
    {
        return _IsValid() ? _second : 0;
    }

    /// Stores one number. On a time that isn't valid the two others become 0 and the status stays as it is.
    /// @return OK; NX_ERR_INVALID_PARAMETER, with nothing changed, for an hour above 23, a minute or second above 59.
    nxErrorEnum SetHour(unsigned int hour);
    nxErrorEnum SetMinute(unsigned int minute);
    nxErrorEnum SetSecond(unsigned int second);

    /// @return 93005 for 09:30:05; the stored numbers whatever the status.
    unsigned int GetAsHHMMSS() const noexcept
    {
        return (_hour * 100 + _minute) * 100 + _second;
    }

    /// Makes the time valid. The numbers are taken as they are: 256199 is hour 25, minute 61, second 99.
    void SetFromHHMMSS(unsigned int const& value);

    /// Takes 09:30:05, or 09:30 with second 0: exactly 8 or 5 characters, without blanks, each number in its range.
    /// @return OK, and the time is valid; NX_ERR_INVALID_PARAMETER, with nothing changed, for any other text.
    nxErrorEnum SetFromString(std::string const& text);

    /// @return 09:30:05; "INVALID" for null and no change.
    std::string GetAsString() const;

    /// @return as GetAsString(), but "NULL" for null.
    std::string GetAsLogString() const;

    /// A null on the left equals nulls only. Else the three stored numbers are compared whatever the statuses, so
    /// midnight equals a null while a null doesn't equal midnight.
    bool operator==(nxTime const& other) const noexcept
    {
        if (IsNull())
            return other.IsNull();
        return std::tie(_hour, _minute, _second) == std::tie(other._hour, other._minute, other._second);
    }

    bool operator!=(nxTime const& other) const noexcept
    {
        return !operator==(other);
    }

    /// False for a null on the left. Else by the three stored numbers whatever the statuses. There is no `<=`.
    bool operator<(nxTime const& other) const noexcept
    {
        return !IsNull() &&
               std::tie(_hour, _minute, _second) < std::tie(other._hour, other._minute, other._second);
    }

    bool operator>(nxTime const& other) const noexcept
    {
        return !IsNull() &&
               std::tie(_hour, _minute, _second) > std::tie(other._hour, other._minute, other._second);
    }

    bool operator>=(nxTime const& other) const noexcept
    {
        return !IsNull() &&
               std::tie(_hour, _minute, _second) >= std::tie(other._hour, other._minute, other._second);
    }

    static unsigned int GetSecondsInADay() noexcept
    {
        return 24 * 60 * 60;
    }

private:
    bool _IsValid() const noexcept
    {
        return _status == NX_VALID;
    }

    void _Set(unsigned int hour, unsigned int minute, unsigned int second) noexcept
    {
        _hour = hour;
        _minute = minute;
        _second = second;
    }

    nxErrorEnum _SetField(unsigned int& field, unsigned int value, unsigned int limit);

    unsigned int _hour = 0;
    unsigned int _minute = 0;
    unsigned int _second = 0;
    nxValueStatusEnum _status;
};
