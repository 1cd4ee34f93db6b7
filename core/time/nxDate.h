#pragma once

#include "core/numbers/nxValueWrapper.h"
#include "core/platform/nxExport.h"
#include "core/vocabulary/nxErrorEnum.h"
#include "core/vocabulary/nxInitalizers.h"

#include <string>

/// @file
/// A calendar day as one number.

/// A day in the form 20240131, or null, or no change, in four bytes that can be stored and sent.
///
/// The class doesn't know the calendar: every number but the two marks is valid, 0 and 20241345 too. The marks are
/// those of `nxValueWrapper<unsigned int, -1, -2>`.
///
/// A plain value: nothing but the default constructor reads the clock, nothing throws or logs, and an instance that
/// threads share is guarded by its owner.
class NX_CORE_API nxDate
{
public:
    /// Today's local date; null should the clock stand before the epoch.
    nxDate();

    /// @param isoDate  stored as it is, marks included.
    nxDate(unsigned int const& isoDate) noexcept : _isoDate(isoDate)
    {
    }

    /// The parts are joined without a check; too large a year wraps around.
    nxDate(unsigned int const& year, unsigned int const& month, unsigned int const& day) noexcept
        : _isoDate((year * 100 + month) * 100 + day)
    {
    }

    nxDate(nxNullInitalizer) noexcept : _isoDate(_nullDate)
    {
    }

    nxDate(nxNoChangeInitalizer) noexcept : _isoDate(_noChangeDate)
    {
    }

    nxDate(nxDate const& other) = default;
    nxDate& operator=(nxDate const& other) = default;

    nxDate& operator=(unsigned int const& isoDate) noexcept
    {
        _isoDate = isoDate;
        return *this;
    }

    ~nxDate() = default;

    static nxDate GetNullInstance() noexcept
    {
        return nxDate(nxNullInitalizer{});
    }

    static nxDate GetNoChangeInstance() noexcept
    {
        return nxDate(nxNoChangeInitalizer{});
    }

    bool IsValid() const noexcept
    {
        return !IsNull() && !IsNoChange();
    }

    bool IsNull() const noexcept
    {
        return _isoDate == _nullDate;
    }

    bool IsNoChange() const noexcept
    {
        return _isoDate == _noChangeDate;
    }

    void SetNull() noexcept
    {
        _isoDate = _nullDate;
    }

    void SetNoChange() noexcept
    {
        _isoDate = _noChangeDate;
    }

    nxValueWrapper<unsigned int, -1, -2> GetAsISODate() const noexcept
    {
        return _isoDate;
    }

    void SetFromISODate(unsigned int const& isoDate) noexcept
    {
        _isoDate = isoDate;
    }

    void SetFromISODate(nxValueWrapper<unsigned int, -1, -2> const& isoDate) noexcept
    {
        _isoDate = isoDate.GetValue();
    }

    /// Reads the number in decimal digits, without a check of the calendar; too large a number wraps around.
    /// @return OK; NX_ERR_INVALID_PARAMETER, with the date unchanged, for an empty text or any other character.
    nxErrorEnum SetFromString(std::string const& text);

    /// By the number, so that null and no change come after all days. There is no `<=` and no `>=`.
    bool operator==(nxDate const& other) const noexcept
    {
        return _isoDate == other._isoDate;
    }

    bool operator!=(nxDate const& other) const noexcept
    {
        return _isoDate != other._isoDate;
    }

    bool operator<(nxDate const& other) const noexcept
    {
        return _isoDate < other._isoDate;
    }

    bool operator>(nxDate const& other) const noexcept
    {
        return _isoDate > other._isoDate;
    }

    /// @name Text: the number in decimal, nothing for null and no change
    /// A format is one of the C library's `strftime` and may name the year, the month and the day; the time of day is
    /// midnight, and a day of the week or year means nothing. It may give up to 1023 bytes, else the text is left out.
    /// @{
    std::string GetAsString() const;
    std::string GetAsString(std::string const& format) const;
    void AppendAsString(std::string& text) const;
    void AppendAsString(std::string& text, std::string const& format) const;
    /// @}

    /// @name Text for the log: the same, but "NULL" for null and "NO_CHANGE" for no change
    /// @{
    std::string GetAsLogString() const;
    std::string GetAsLogString(std::string const& format) const;
    void AppendAsLogString(std::string& text) const;
    void AppendAsLogString(std::string& text, std::string const& format) const;
    /// @}

private:
    static constexpr unsigned int _nullDate = nxValueWrapper<unsigned int, -1, -2>::nullValue;
    static constexpr unsigned int _noChangeDate = nxValueWrapper<unsigned int, -1, -2>::noChangeValue;

    void _AppendAsString(std::string& text, char const* format) const;
    bool _AppendMarkAsLogString(std::string& text) const;

    unsigned int _isoDate;
};
