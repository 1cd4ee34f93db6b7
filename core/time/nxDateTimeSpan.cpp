#include "core/time/nxDateTimeSpan.h"

nxDateTimeSpan::nxDateTimeSpan(int years, int months, int days, int hours, int minutes, int seconds)
    : _seconds(seconds), _hours(hours), _months(months), _days(days), _minutes(minutes), _years(years)
{
}

nxDateTimeSpan::~nxDateTimeSpan() = default;

int nxDateTimeSpan::GetYears() const
{
    return _years;
}

int nxDateTimeSpan::GetMonths() const
{
    return _months;
}

int nxDateTimeSpan::GetDays() const
{
    return _days;
}

int nxDateTimeSpan::GetHours() const
{
    return _hours;
}

int nxDateTimeSpan::GetMinutes() const
{
    return _minutes;
}

int nxDateTimeSpan::GetSeconds() const
{
    return _seconds;
}

void nxDateTimeSpan::SetYears(int years)
{
    _years = years;
}

void nxDateTimeSpan::SetMonths(int months)
{
    _months = months;
}

void nxDateTimeSpan::SetDays(int days)
{
    _days = days;
}

void nxDateTimeSpan::SetHours(int hours)
{
    _hours = hours;
}

void nxDateTimeSpan::SetMinutes(int minutes)
{
    _minutes = minutes;
}

void nxDateTimeSpan::SetSeconds(int seconds)
{
    _seconds = seconds;
}

int nxDateTimeSpan::GetTotalSeconds() const
{
    return _totalSeconds;
}

int nxDateTimeSpan::GetTotalMinutes() const
{
    return _totalSeconds / 60;
}

int nxDateTimeSpan::GetTotalHours() const
{
    return _totalSeconds / 3600;
}

int nxDateTimeSpan::GetTotalDays() const
{
    return _totalSeconds / 86400;
}
