#pragma once

#include <charconv>
#include <cstddef>
#include <limits>
#include <string>
#include <string_view>

/// @file
/// The digits of fraction prices, for the converters' sources only.

/// Writing. A menu holds the character for each count: the quarters of a thirty-second are the menu "0257".
namespace nxFractionText
{
/// Toward zero; 0 for what no `unsigned short` holds, which no price with digits after its point gives.
inline unsigned short TruncateToShort(double value)
{
    return value >= 0.0 && value < 65536.0 ? static_cast<unsigned short>(value)
                                           : static_cast<unsigned short>(0);
}

inline unsigned short RoundUpAboveHalf(unsigned short count, double rest)
{
    return static_cast<unsigned short>(count + (rest > 0.5 ? 1 : 0));
}

/// @param width  digits at least, filled with zeros from the left; for numbers that are not negative.
inline void AppendNumber(std::string& text, long long number, std::size_t width = 1)
{
    char digits[20]; // the smallest number: a sign and 19 digits
    char const* const end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    auto const length = static_cast<std::size_t>(end - digits);
    text.append(width > length ? width - length : 0, '0');
    text.append(digits, length);
}

/// A count beyond the menu shows the last entry.
inline void AppendEntryOrLast(std::string& text, unsigned short count, std::string_view menu)
{
    text += menu[count < menu.size() ? count : menu.size() - 1];
}

/// A count beyond the menu shows nothing.
inline void AppendEntryOrNothing(std::string& text, unsigned short count, std::string_view menu)
{
    if (count < menu.size())
    {
        text += menu[count];
    }
}
} // namespace nxFractionText

/// Reading. Each step answers whether it takes the digit; the accumulator counts the smallest parts seen so far.
namespace nxFractionDigits
{
/// Takes '0' to '9'.
inline bool ReadDigit(char character, unsigned short& digit)
{
    if (character < '0' || character > '9')
    {
        return false;
    }
    digit = static_cast<unsigned short>(character - '0');
    return true;
}

inline void Accumulate(unsigned short& accumulator, int parts)
{
    accumulator = static_cast<unsigned short>(parts);
}

/// The first digit, which must be below `limit`.
inline bool TakeFirst(unsigned short digit, unsigned short limit, unsigned short& accumulator)
{
    accumulator = digit;
    return digit < limit;
}

/// The second digit, refused only if it is at least `refusedDigit` behind a first of at least `refusedFirst`.
/// @param scale  the smallest parts in one part of the first level.
inline bool TakeSecond(unsigned short digit, unsigned short refusedDigit, unsigned short refusedFirst,
                       unsigned short scale, unsigned short& accumulator)
{
    if (digit >= refusedDigit && accumulator >= refusedFirst)
    {
        return false;
    }
    Accumulate(accumulator, (accumulator * 10 + digit) * scale);
    return true;
}

/// A digit that stands in the menu; its place there is what it counts.
inline bool TakeEntry(unsigned short digit, std::string_view menu, unsigned short unit,
                      unsigned short& accumulator)
{
    auto const place = menu.find(static_cast<char>('0' + digit));
    if (place == std::string_view::npos)
    {
        return false;
    }
    Accumulate(accumulator, accumulator + static_cast<int>(place) * unit);
    return true;
}

/// What the parser has found in a text.
struct Reading
{
    double value = 0.0;
    unsigned short accumulator = 0;
    bool negative = false;
};

/// Walks a text by its length, so that a zero byte is a character like any other.
/// @param readCharacter  (character, position, digit, negative, separator): what the character means.
/// @param allowsLength   (count): whether so many characters may follow the separator.
/// @param takeDigit      (distance behind the separator from 1, digit, accumulator, value).
/// @return whether all of it was taken.
template <class ReadCharacter, class AllowsLength, class TakeDigit>
bool Read(std::string const& text, Reading& reading, ReadCharacter readCharacter, AllowsLength allowsLength,
          TakeDigit takeDigit)
{
    if (text.size() > std::numeric_limits<unsigned short>::max())
    {
        return false;
    }
    auto const length = static_cast<unsigned short>(text.size());
    bool separatorSeen = false;
    unsigned short separatorPosition = 0;
    for (unsigned short position = 0; position < length; ++position)
    {
        unsigned short digit = 0;
        bool separator = false;
        if (!readCharacter(&text[position], position, digit, reading.negative, separator))
        {
            return false;
        }
        if (separator)
        {
            if (separatorSeen || !allowsLength(static_cast<unsigned short>(length - position - 1)))
            {
                return false;
            }
            separatorSeen = true;
            separatorPosition = position;
        }
        else if (!separatorSeen)
        {
            reading.value = reading.value * 10.0 + digit; // the sign in front counts as a digit 0
        }
        else if (!takeDigit(position - separatorPosition, digit, reading.accumulator, reading.value))
        {
            return false;
        }
    }
    return true;
}
} // namespace nxFractionDigits
