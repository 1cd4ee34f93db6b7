#pragma once

#include "core/text/nxPowersOfTen.h"

#include <limits>

/// @file
/// The arithmetic under nxDecimal and the price code: sums that wrap, powers of ten, and doubles made integers.
/// For the library's own sources and for the inline part of its headers.

namespace nxArithmetic
{

/// @name Signed 64-bit arithmetic that wraps
/// @{
constexpr long long Add(long long left, long long right)
{
    return static_cast<long long>(static_cast<unsigned long long>(left) +
                                  static_cast<unsigned long long>(right));
}

constexpr long long Subtract(long long left, long long right)
{
    return static_cast<long long>(static_cast<unsigned long long>(left) -
                                  static_cast<unsigned long long>(right));
}

constexpr long long Multiply(long long left, long long right)
{
    return static_cast<long long>(static_cast<unsigned long long>(left) *
                                  static_cast<unsigned long long>(right));
}

constexpr long long Negate(long long value)
{
    return Subtract(0, value);
}

/// Truncates; the smallest number by -1 is itself. A zero divisor is the caller's to avoid.
constexpr long long Divide(long long dividend, long long divisor)
{
    return divisor == -1 ? Negate(dividend) : dividend / divisor;
}

/// |value|; the smallest number has one too.
constexpr unsigned long long Magnitude(long long value)
{
    auto const bits = static_cast<unsigned long long>(value);
    return value < 0 ? 0 - bits : bits;
}
/// @}

/// 10^places in 64 bits, unsigned and wrapping: 0 from 64 places on.
constexpr unsigned long long PowerOfTen(unsigned char places)
{
    return nxPowersOfTen::asInteger[places];
}

/// That same wrapped power as a double.
constexpr double PowerOfTenAsDouble(unsigned char places)
{
    return nxPowersOfTen::asDouble[places];
}

/// A double cut toward zero; what is no number and what does not fit gives -2^63.
constexpr long long ToInt64(double value)
{
    constexpr double limit = 9223372036854775808.0; // 2^63
    return value >= -limit && value < limit ? static_cast<long long>(value)
                                            : std::numeric_limits<long long>::min();
}

/// A double rounded to the nearest whole number, a half toward plus infinity; else as ToInt64().
///
/// The same as floor(), or ceil() where the value lies half a unit or more above it: what truncation leaves is exact,
/// so that it alone tells which of the neighbours is meant.
constexpr long long RoundHalfUp(double value)
{
    constexpr double limit = 9223372036854775808.0; // 2^63
    if (!(value >= -limit && value < limit))
        return std::numeric_limits<long long>::min();
    auto const truncated = static_cast<long long>(value);
    double const rest = value - static_cast<double>(truncated);
    return truncated + (rest >= 0.5 ? 1 : 0) - (rest < -0.5 ? 1 : 0);
}

} // namespace nxArithmetic
