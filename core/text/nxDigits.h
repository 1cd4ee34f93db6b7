#pragma once

#include <algorithm>
#include <bit>
#include <concepts>
#include <cstddef>
#include <cstring>
#include <limits>
#include <string_view>

/// @file
/// Decimal digits of unsigned numbers, written backward two at a time and read. For the library's own sources.

namespace nxDigits
{

/// Most digits of an `unsigned long long`.
inline constexpr unsigned int maximum = 20;

inline constexpr char pairs[] =
    "00010203040506070809101112131415161718192021222324252627282930313233343536373839"
    "40414243444546474849505152535455565758596061626364656667686970717273747576777879"
    "8081828384858687888990919293949596979899";

/// 10^0 to 10^19, all that fit.
inline constexpr unsigned long long powersOfTen[maximum] = {1ull,
                                                            10ull,
                                                            100ull,
                                                            1000ull,
                                                            10000ull,
                                                            100000ull,
                                                            1000000ull,
                                                            10000000ull,
                                                            100000000ull,
                                                            1000000000ull,
                                                            10000000000ull,
                                                            100000000000ull,
                                                            1000000000000ull,
                                                            10000000000000ull,
                                                            100000000000000ull,
                                                            1000000000000000ull,
                                                            10000000000000000ull,
                                                            100000000000000000ull,
                                                            1000000000000000000ull,
                                                            10000000000000000000ull};

/// The same as doubles, as far as they are exact.
inline constexpr double powersOfTenAsDouble[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,
                                                 1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19};

/// How many digits `value` has; 0 has one.
constexpr unsigned int Count(unsigned long long value)
{
    // 1233 / 4096 is a little more than the logarithm of 2 to the base 10; the table settles the rest.
    unsigned int const guess = (static_cast<unsigned int>(std::bit_width(value | 1)) * 1233) >> 12;
    return guess + ((value | 1) >= powersOfTen[guess] ? 1 : 0);
}

/// 0 to 9 for a digit, more for any other byte.
constexpr unsigned int ValueOf(char c)
{
    return static_cast<unsigned int>(static_cast<unsigned char>(c)) - '0';
}

/// Writes all digits of `value` so that they end before `end`.
/// @return the first digit.
template <std::unsigned_integral UnsignedT>
char* WriteBackward(char* end, UnsignedT value)
{
    while (value >= 100)
    {
        end -= 2;
        std::memcpy(end, pairs + value % 100 * 2, 2);
        value /= 100;
    }
    if (value >= 10)
    {
        end -= 2;
        std::memcpy(end, pairs + value * 2, 2);
        return end;
    }
    *--end = static_cast<char>('0' + value);
    return end;
}

/// Writes the lowest `count` digits of `value`, leading zeros included, so that they end before `end`.
/// @return what is left of the value above those digits.
inline unsigned long long WriteLowestBackward(char* end, unsigned long long value, unsigned int count)
{
    for (; count >= 2; count -= 2)
    {
        end -= 2;
        std::memcpy(end, pairs + value % 100 * 2, 2);
        value /= 100;
    }
    if (count != 0)
    {
        *--end = static_cast<char>('0' + value % 10);
        value /= 10;
    }
    return value;
}

/// What a text of digits with at most one separator holds.
struct Number
{
    unsigned long long gathered; ///< all digits as one number, wrapping
    std::size_t count;           ///< of all digits, 1 or more
    std::size_t decimals;        ///< of those behind the separator
};

/// Reads digits up to a zero byte, among them at most one separator.
/// @return whether there was nothing else and at least one digit; if not, `number` is left in any state.
inline bool Read(char const* text, char separator, Number& number)
{
    char const* point = nullptr;
    char const* at = text;
    unsigned long long gathered = 0;
    for (; *at != '\0'; ++at)
    {
        if (*at == separator)
        {
            if (point != nullptr)
            {
                return false;
            }
            point = at;
            continue;
        }
        unsigned int const digit = ValueOf(*at);
        if (digit > 9)
        {
            return false;
        }
        gathered = gathered * 10 + digit;
    }
    number.gathered = gathered;
    number.count = static_cast<std::size_t>(at - text) - (point == nullptr ? 0 : 1);
    number.decimals = static_cast<std::size_t>(point == nullptr ? 0 : at - point - 1);
    return number.count != 0;
}

/// Reads a text that is digits and nothing else, at least one. Too many of them wrap around in the width of `value`.
/// @return false, with `value` left alone, for any other text.
template <std::unsigned_integral UnsignedT>
constexpr bool ReadAll(std::string_view text, UnsignedT& value)
{
    UnsignedT gathered = 0;
    for (char const c : text)
    {
        unsigned int const digit = ValueOf(c);
        if (digit > 9)
        {
            return false;
        }
        gathered = gathered * 10 + digit;
    }
    if (text.empty())
    {
        return false;
    }
    value = gathered;
    return true;
}

/// Reads what atoi() does in the C locale: blanks, a sign, and digits up to the first other byte; 0 without digits.
/// A number that doesn't fit is the nearest that does.
constexpr int ReadLeading(std::string_view text)
{
    std::size_t at = std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size());
    bool const isNegative = at < text.size() && text[at] == '-';
    if (isNegative || (at < text.size() && text[at] == '+'))
    {
        ++at;
    }
    constexpr long long limit = std::numeric_limits<int>::max();
    long long magnitude = 0;
    for (; at < text.size() && ValueOf(text[at]) <= 9; ++at)
    {
        magnitude = std::min(limit + 1, magnitude * 10 + ValueOf(text[at]));
    }
    return static_cast<int>(isNegative ? -magnitude : std::min(limit, magnitude));
}

} // namespace nxDigits
