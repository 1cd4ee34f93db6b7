#pragma once

#include "core/text/nxPowersOfTen.h"

#include <algorithm>
#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
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

/// How many digits `value` has; 0 has one.
constexpr unsigned int Count(unsigned long long value)
{
    // 1233 / 4096 is a little more than the logarithm of 2 to the base 10; the table settles the rest.
    unsigned int const guess = (static_cast<unsigned int>(std::bit_width(value | 1)) * 1233) >> 12;
    return guess + ((value | 1) >= nxPowersOfTen::asInteger[guess] ? 1 : 0);
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

/// Appends the digits of `value`, with zeros before them if there are fewer than `least`.
inline void AppendPadded(std::string& out, unsigned int value, unsigned int least)
{
    unsigned int const count = std::max(Count(value), least);
    out.resize(out.size() + count);
    (void)WriteLowestBackward(out.data() + out.size(), value, count);
}

/// The digits of a small number as text in one word: the first digit in its lowest byte, nothing above the last.
struct Word
{
    static constexpr unsigned int limit = 100000000; ///< numbers below it have room

    std::uint64_t bytes;
    unsigned int count; ///< of digits

    /// Writes the bytes of a text that is `size` bytes long, 1 to 8, and touches no byte behind it.
    static void Put(char* out, std::uint64_t text, unsigned int size)
    {
        if (size == sizeof text)
        {
            std::memcpy(out, &text, sizeof text);
        }
        else if (size >= sizeof(std::uint32_t))
        {
            auto const first = static_cast<std::uint32_t>(text);
            auto const last = static_cast<std::uint32_t>(text >> 8 * (size - sizeof first));
            std::memcpy(out, &first, sizeof first);
            std::memcpy(out + size - sizeof last, &last, sizeof last);
        }
        else
        {
            // The second of two bytes is their last, that of three is written by itself.
            out[0] = static_cast<char>(text);
            out[size / 2] = static_cast<char>(text >> 8 * (size / 2));
            out[size - 1] = static_cast<char>(text >> 8 * (size - 1));
        }
    }
};

/// Whether numbers may be made as words: the lowest byte of a word is its first in memory.
inline constexpr bool hasWords = std::endian::native == std::endian::little;

inline constexpr std::uint64_t wordOfZeros = 0x3030303030303030;

/// The digits of two numbers below 10000, four each, leading zeros included. Hundreds and tens are parted side by side
/// in one word, by products with the inverses of 100 and 10.
constexpr std::uint64_t EightDigits(unsigned int upper, unsigned int lower)
{
    std::uint64_t const halves = upper | std::uint64_t{lower} << 32;
    std::uint64_t const hundreds = halves * 10486 >> 20 & 0x0000007F0000007F;
    std::uint64_t const quarters = hundreds | (halves - hundreds * 100) << 16;
    std::uint64_t const tens = quarters * 103 >> 10 & 0x000F000F000F000F;
    return (tens | (quarters - tens * 10) << 8) | wordOfZeros;
}

/// The digits of `value`, below Word::limit, and zeros before them if there are fewer than `least` (1 to 8).
constexpr Word WriteWord(unsigned int value, unsigned int least)
{
    std::uint64_t const digits = EightDigits(value / 10000, value % 10000);
    // The lowest byte that is no zero, or the first of those that are wanted anyway.
    auto const first = static_cast<unsigned int>(
        std::countr_zero((digits ^ wordOfZeros) | std::uint64_t{1} << 8 * (8 - least)) / 8);
    return {digits >> 8 * first, 8 - first};
}

/// What a text of digits with at most one separator holds.
struct Number
{
    unsigned long long gathered; ///< all digits as one number, wrapping
    std::size_t count;           ///< of all digits, 1 or more
    std::size_t decimals;        ///< of those behind the separator
};

/// Read() for a separator that is a digit itself.
inline bool ReadWithDigitAsSeparator(char const* text, char separator, Number& number)
{
    char const* point = nullptr;
    char const* at = text;
    unsigned long long gathered = 0;
    for (; *at != '\0'; ++at)
    {
        if (*at == separator)
        {
            if (point != nullptr)
                return false;
            point = at;
            continue;
        }
        unsigned int const digit = ValueOf(*at);
        if (digit > 9)
            return false;
        gathered = gathered * 10 + digit;
    }
    number.gathered = gathered;
    number.count = static_cast<std::size_t>(at - text) - (point == nullptr ? 0 : 1);
    number.decimals = static_cast<std::size_t>(point == nullptr ? 0 : at - point - 1);
    return number.count != 0;
}

/// Adds the digits from `at` on to `gathered`, wrapping.
/// @return the first byte that is no digit.
inline char const* ReadRun(char const* at, unsigned long long& gathered)
{
    for (unsigned int digit = ValueOf(*at); digit <= 9; digit = ValueOf(*at))
    {
        gathered = gathered * 10 + digit;
        ++at;
    }
    return at;
}

/// Reads digits up to a zero byte, among them at most one separator, which may be any byte but zero: one that is a digit
/// is a separator.
/// @return whether there was nothing else and at least one digit; if not, `number` is left in any state.
inline bool Read(char const* text, char separator, Number& number)
{
    if (ValueOf(separator) <= 9)
        return ReadWithDigitAsSeparator(text, separator, number);
    number.gathered = 0;
    char const* const point = ReadRun(text, number.gathered);
    char const* end = point;
    if (*point == separator && *point != '\0')
    {
        end = ReadRun(point + 1, number.gathered);
        number.decimals = static_cast<std::size_t>(end - point - 1);
    }
    else
    {
        number.decimals = 0;
    }
    number.count = static_cast<std::size_t>(point - text) + number.decimals;
    return *end == '\0' && number.count != 0;
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
            return false;
        gathered = gathered * 10 + digit;
    }
    if (text.empty())
        return false;
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
        ++at;
    constexpr long long limit = std::numeric_limits<int>::max();
    long long magnitude = 0;
    for (; at < text.size() && ValueOf(text[at]) <= 9; ++at)
        magnitude = std::min(limit + 1, magnitude * 10 + ValueOf(text[at]));
    return static_cast<int>(isNegative ? -magnitude : std::min(limit, magnitude));
}

} // namespace nxDigits
