#pragma once

#include "core/platform/nxExport.h"

/// @file
/// The difference of two date-times, field by field.

/// Years, months, days, hours, minutes and seconds as plain numbers: 90 minutes stay 90 minutes, and each may be
/// negative.
///
/// The total in seconds stands apart. Only nxDateTime::GetDifference() fills it in; setting a field leaves it.
///
/// A plain value: nothing throws or logs, and an instance that threads share is guarded by its owner.
class NX_CORE_API nxDateTimeSpan
{
public:
    nxDateTimeSpan() = default;
    nxDateTimeSpan(int years, int months, int days, int hours, int minutes, int seconds);
    nxDateTimeSpan(nxDateTimeSpan const& other) = default;
    nxDateTimeSpan& operator=(nxDateTimeSpan const& other) = default;
    virtual ~nxDateTimeSpan();

    int GetYears() const;
    int GetMonths() const;
    int GetDays() const;
    int GetHours() const;
    int GetMinutes() const;
    int GetSeconds() const;

    void SetYears(int years);
    void SetMonths(int months);
    void SetDays(int days);
    void SetHours(int hours);
    void SetMinutes(int minutes);
    void SetSeconds(int seconds);

    /// @return the elapsed time of the GetDifference() that made this span; 0 in all others.
    int GetTotalSeconds() const;

    /// The total seconds in whole minutes, hours (of 3600 s) and days (of 86400 s), cut toward zero.
    int GetTotalMinutes() const;
    int GetTotalHours() const;
    int GetTotalDays() const;

private:
    friend class nxDateTime;

    int _seconds = 0;
    int _hours = 0;
    int _months = 0;
    int _days = 0;
    int _minutes = 0;
    int _years = 0;
    int _totalSeconds = 0;
};
