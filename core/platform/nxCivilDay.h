#pragma once

/// @file
/// Arithmetic of the Gregorian calendar, carried on in both directions for ever. No zone and no system call is
/// involved. For the library's own sources.

namespace nxPlatform
{

constexpr long long secondsPerDay = 86400;

/// A day of the calendar.
struct CivilDay
{
    long long year;
    unsigned int month; ///< 1 to 12
    unsigned int day;   ///< 1 to 31
};

/// Quotient rounded toward minus infinity, for a positive divisor.
constexpr long long FloorDivide(long long dividend, long long divisor)
{
    return dividend / divisor - (dividend % divisor < 0 ? 1 : 0);
}

// Both conversions count years from March, so that the leap day is a year's last, in eras of 400 years, which all
// have the same number of days.
constexpr long long daysPerEra = 146097;
constexpr long long daysFromEraStartToEpoch = 719468; // 0000-03-01 to 1970-01-01

/// Days from 1970-01-01 to the first day of a month.
///
/// @param month  1 to 12; a month outside is not carried into the year.
constexpr long long DaysToMonth(long long year, unsigned int month)
{
    long long const yearFromMarch = year - (month <= 2 ? 1 : 0);
    long long const era = FloorDivide(yearFromMarch, 400);
    long long const yearOfEra = yearFromMarch - era * 400;
    long long const dayOfYear = (153 * ((month + 9) % 12) + 2) / 5;
    return era * daysPerEra + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear -
           daysFromEraStartToEpoch;
}

/// The day that lies so many days after 1970-01-01, or before it when negative.
constexpr CivilDay CivilFromDays(long long days)
{
    long long const shifted = days + daysFromEraStartToEpoch;
    long long const era = FloorDivide(shifted, daysPerEra);
    auto const dayOfEra = static_cast<unsigned int>(shifted - era * daysPerEra);
    unsigned int const yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    unsigned int const dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    unsigned int const monthFromMarch = (5 * dayOfYear + 2) / 153;
    unsigned int const month = monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9;
    return {era * 400 + yearOfEra + (month <= 2 ? 1 : 0), month,
            dayOfYear - (153 * monthFromMarch + 2) / 5 + 1};
}

} // namespace nxPlatform
