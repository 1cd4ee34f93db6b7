#pragma once

#include <charconv>
#include <cstddef>
#include <string>
#include <string_view>

/// @file
/// What stands behind a fraction price's separator, for the converters' sources only: the columns of
/// tables/fractions.def.

/// Writing.
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

/// The count in so many digits at least, in parts of which a tick has so many.
class Number
{
public:
    constexpr explicit Number(std::size_t width, int parts = 1) : _width(width), _parts(parts)
    {
    }
    void Append(std::string& text, unsigned short count) const
    {
        AppendNumber(text, count * _parts, _width);
    }

private:
    std::size_t _width;
    int _parts;
};

/// The character for each count: the quarters of a thirty-second are the menu "0257". A count beyond it shows nothing.
class MenuOrNothing
{
public:
    constexpr explicit MenuOrNothing(std::string_view menu) : _menu(menu)
    {
    }
    void Append(std::string& text, unsigned short count) const
    {
        text += _menu.substr(count < _menu.size() ? count : _menu.size(), 1);
    }

protected:
    std::string_view _menu;
};

/// A count beyond the menu shows its last entry.
class Menu : public MenuOrNothing
{
public:
    using MenuOrNothing::MenuOrNothing;
    void Append(std::string& text, unsigned short count) const
    {
        text += count < _menu.size() ? _menu[count] : _menu.back();
    }
};

/// The second level of the formats that have one.
class Nothing
{
public:
    void Append(std::string& /*text*/, unsigned short /*count*/) const
    {
    }
};
} // namespace nxFractionText

/// Reading. Each step answers whether it takes the digit; the accumulator counts the smallest parts seen so far.
namespace nxFractionDigits
{
/// Takes '0' to '9'.
inline bool ReadDigit(char character, unsigned short& digit)
{
    if (character < '0' || character > '9')
        return false;
    digit = static_cast<unsigned short>(character - '0');
    return true;
}

inline bool Accumulate(unsigned short& accumulator, int parts)
{
    accumulator = static_cast<unsigned short>(parts);
    return true;
}

/// What the count is worth joins the value.
inline bool Add(double& value, double worth)
{
    value += worth;
    return true;
}

/// A digit below the limit joins the count.
class Below
{
public:
    constexpr explicit Below(int limit) : _limit(limit)
    {
    }
    bool Take(unsigned short digit, unsigned short& accumulator) const
    {
        return digit < _limit && Accumulate(accumulator, accumulator + digit);
    }

private:
    int _limit;
};

/// The second digit of a number; refused only if it is at least `refusedDigit` behind a first of at least
/// `refusedFirst`. One of its parts has `scale` of the smallest.
class Pair
{
public:
    constexpr Pair(int refusedDigit, int refusedFirst, int scale = 1)
        : _refusedDigit(refusedDigit), _refusedFirst(refusedFirst), _scale(scale)
    {
    }
    bool Take(unsigned short digit, unsigned short& accumulator) const
    {
        bool const isRefused = digit >= _refusedDigit && accumulator >= _refusedFirst;
        return !isRefused && Accumulate(accumulator, (accumulator * 10 + digit) * _scale);
    }

private:
    int _refusedDigit;
    int _refusedFirst;
    int _scale;
};

/// The second digit of a number up to the limit. One of its parts has `scale` of the smallest.
class UpTo
{
public:
    constexpr explicit UpTo(int limit, int scale = 1) : _limit(limit), _scale(scale)
    {
    }
    bool Take(unsigned short digit, unsigned short& accumulator) const
    {
        int const parts = accumulator * 10 + digit;
        return parts <= _limit && Accumulate(accumulator, parts * _scale);
    }

private:
    int _limit;
    int _scale;
};

/// A digit that stands in the menu; its place there counts `unit` each, on top of the count so far times `scale`.
class Entry
{
public:
    constexpr explicit Entry(std::string_view menu, int unit = 1, int scale = 1)
        : _menu(menu), _unit(unit), _scale(scale)
    {
    }
    bool Take(unsigned short digit, unsigned short& accumulator) const
    {
        auto const place = _menu.find(static_cast<char>('0' + digit));
        return place != std::string_view::npos &&
               Accumulate(accumulator, accumulator * _scale + static_cast<int>(place) * _unit);
    }

private:
    std::string_view _menu;
    int _unit;
    int _scale;
};
} // namespace nxFractionDigits
