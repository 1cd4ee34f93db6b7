#include "core/text/nxStringHelper.h"

#include "core/text/nxBlanks.h"
#include "core/text/nxDigits.h"
#include "core/text/nxPowersOfTen.h"
#include "core/vocabulary/nxEnum.h"

#include <algorithm>
#include <bit>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace
{

constexpr unsigned int maximumPrecision = 9; // the default too
constexpr double largestFixed = 2147483647.0;

nxErrorEnum Refused()
{
    return nxErrorEnum(NX_ERR_INVALID_PARAMETER);
}

/// Adds `count` bytes for the caller to write.
/// @return the end of the text.
char* Grow(std::string& out, std::size_t count)
{
    out.resize(out.size() + count);
    return out.data() + out.size();
}

template <class IntegerT>
void Append(std::string& out, IntegerT value)
{
    using UnsignedT =
        std::conditional_t<sizeof(IntegerT) <= sizeof(unsigned int), unsigned int, unsigned long long>;
    // The magnitude is taken as unsigned, so that the smallest value has one too.
    auto magnitude = static_cast<UnsignedT>(value);
    bool const negative = std::is_signed_v<IntegerT> && value < 0;
    if (negative)
        magnitude = 0 - magnitude;
    if (nxDigits::hasWords && magnitude < nxDigits::Word::limit)
    {
        nxDigits::Word const word = nxDigits::WriteWord(static_cast<unsigned int>(magnitude), 1);
        unsigned int const size = word.count + (negative ? 1 : 0);
        char text[1 + sizeof word.bytes];
        text[0] = '-';
        std::memcpy(text + (negative ? 1 : 0), &word.bytes, sizeof word.bytes);
        out.append(text, size);
        return;
    }
    char* const end = Grow(out, nxDigits::Count(magnitude) + (negative ? 1 : 0));
    char* const first = nxDigits::WriteBackward(end, magnitude);
    if (negative)
        first[-1] = '-';
}

template <class IntegerT>
std::string TextOf(IntegerT value)
{
    std::string text;
    Append(text, value);
    return text;
}

/// A number in fixed form, its decimals without trailing zeros.
struct Fixed
{
    unsigned int whole;
    unsigned int fraction;
    unsigned int decimals; // digits of the fraction, with its leading zeros
};

/// Halves go to even as far as the last digit goes; see the header.
inline Fixed RoundToFixed(double magnitude, unsigned int places)
{
    auto const power = static_cast<unsigned int>(nxPowersOfTen::asInteger[places]);
    Fixed fixed{static_cast<unsigned int>(magnitude), 0, places};
    double const scaled = (magnitude - fixed.whole) * power;
    fixed.fraction = static_cast<unsigned int>(scaled);
    double const rest = scaled - fixed.fraction;
    // Prices lie a hair above or below their digits by chance, so that no branch may ask which.
    bool const up = rest > 0.5;
    fixed.fraction += up ? 1 : 0;
    if (fixed.fraction >= power && up)
    {
        fixed.fraction = 0;
        ++fixed.whole;
    }
    if (rest == 0.5 && (fixed.fraction == 0 || fixed.fraction % 2 != 0))
        ++fixed.fraction; // not carried into the whole part, even if all places were nines
    if (places == 0)
    {
        fixed.fraction = 0;
        if (rest == 0.5 && fixed.whole % 2 != 0)
            ++fixed.whole;
    }
    return fixed;
}

/// A fraction of nothing but zeros has no decimals. One that was rounded up to all of its power loses them all
/// but the 1: that is how 0.95 at one place becomes 0.1.
void DropTrailingZeros(Fixed& fixed)
{
    if (fixed.fraction == 0)
    {
        fixed.decimals = 0;
        return;
    }
    // Nine digits end in eight zeros at most, or in nine where they stand for the whole power.
    for (unsigned int const zeros : {4u, 4u, 2u, 1u})
    {
        auto const power = static_cast<unsigned int>(nxPowersOfTen::asInteger[zeros]);
        if (fixed.fraction % power == 0)
        {
            fixed.fraction /= power;
            fixed.decimals -= zeros;
        }
    }
}

/// "%e" in the classic locale, whatever the host's.
void AppendScientific(std::string& out, double value)
{
    constexpr int precision = 6;
    char buffer[24]; // sign, seven digits, point, "e+308"
    auto const result =
        std::to_chars(buffer, buffer + sizeof(buffer), value, std::chars_format::scientific, precision);
    out.append(buffer, result.ptr);
}

constexpr std::size_t fixedSize = 24; // more than sign, ten digits, point and nine digits

/// Writes the text of nine places and a whole part that is a word: the usual price, without a branch on its digits.
/// @param out  has room for fixedSize bytes, all of which may be written.
/// @return the end of the text.
inline char* WriteWords(char* out, bool negative, unsigned int whole, unsigned int fraction)
{
    constexpr unsigned int digitsOfWord = 8;
    unsigned int const upper = fraction / 100000;
    unsigned int const firstEight = fraction / 10;
    unsigned int const last = fraction - firstEight * 10;
    std::uint64_t const digits = nxDigits::EightDigits(upper, firstEight - upper * 10000);
    auto const zeros = static_cast<unsigned int>(std::countl_zero(digits ^ nxDigits::wordOfZeros)) / 8;
    unsigned int const decimals = last != 0 ? digitsOfWord + 1 : digitsOfWord - zeros;

    nxDigits::Word const word = nxDigits::WriteWord(whole, 1);
    *out = '-';
    out += negative ? 1 : 0;
    std::memcpy(out, &word.bytes, sizeof word.bytes);
    out += word.count;
    *out = '.';
    std::memcpy(out + 1, &digits, sizeof digits);
    out[1 + digitsOfWord] = static_cast<char>('0' + last);
    return out + decimals + (decimals != 0 ? 1 : 0);
}

/// Any number at any precision.
[[gnu::noinline]] void AppendFixed(std::string& out, double value, unsigned int precision)
{
    bool const negative = value < 0.0; // not so for a negative zero
    double const magnitude = negative ? -value : value;
    if (!(magnitude <= largestFixed))
    {
        AppendScientific(out, value);
        return;
    }
    // A negative int arrives as a large unsigned number.
    unsigned int const places = precision > 0x7FFFFFFFu ? 0 : std::min(precision, maximumPrecision);
    Fixed fixed = RoundToFixed(magnitude, places);
    DropTrailingZeros(fixed);
    // The 1 of a whole power stands behind the point even though no digit is left to it.
    unsigned int const decimals = fixed.fraction == 0 ? 0 : std::max(fixed.decimals, 1u);
    char buffer[fixedSize];
    char* const end = buffer + sizeof(buffer);
    char* first = end;
    if (decimals != 0)
    {
        nxDigits::WriteLowestBackward(end, fixed.fraction, decimals);
        first -= decimals + 1;
        *first = '.';
    }
    first = nxDigits::WriteBackward(first, fixed.whole);
    if (negative)
        *--first = '-';
    out.append(first, static_cast<std::size_t>(end - first));
}

/// The usual number is written in its place, if there is room: a copy of now seven, now eight bytes is a branch that is
/// guessed wrong. All else is done elsewhere, so that nothing is saved and restored for it here.
void Append(std::string& out, double value, unsigned int precision)
{
    static constexpr char room[fixedSize] = {};
    constexpr auto power = static_cast<unsigned int>(nxPowersOfTen::asInteger[maximumPrecision]);
    constexpr double limit = nxDigits::Word::limit;
    double const magnitude = std::fabs(value);
    std::size_t const size = out.size();
    if (nxDigits::hasWords && magnitude < limit && precision == maximumPrecision &&
        out.capacity() - size >= fixedSize)
    {
        // Rounded without a look at what truncation leaves: what comes after waits for the fraction. The look, which
        // finds the ties, can come late.
        auto const whole = static_cast<unsigned int>(magnitude);
        double const scaled = (magnitude - whole) * power;
        auto const fraction = static_cast<unsigned int>(scaled + 0.5);
        if (std::fabs(fraction - scaled) < 0.5 && fraction < power)
        {
            out.append(room, fixedSize);
            char const* const end = WriteWords(out.data() + size, value < 0.0, whole, fraction);
            out.erase(static_cast<std::size_t>(end - out.data()));
            return;
        }
    }
    AppendFixed(out, value, precision);
}

/// Digits up to a zero byte, wrapping in the width of the number.
/// @return whether there was nothing else.
template <class UnsignedT>
bool ReadDigits(char const* text, UnsignedT& value)
{
    UnsignedT read = 0;
    for (; *text != '\0'; ++text)
    {
        unsigned int const digit = nxDigits::ValueOf(*text);
        if (digit > 9)
            return false;
        read = static_cast<UnsignedT>(read * 10u + digit);
    }
    value = read;
    return true;
}

template <class UnsignedT>
nxErrorEnum SetUnsigned(std::string const& text, UnsignedT& value)
{
    // A minus sign is no digit, so that it is refused with all else.
    return !text.empty() && ReadDigits(text.c_str(), value) ? nxErrorEnum() : Refused();
}

template <class SignedT>
nxErrorEnum SetSigned(std::string const& text, SignedT& value)
{
    using UnsignedT = std::make_unsigned_t<SignedT>;
    char const* digits = text.c_str();
    bool const negative = *digits == '-';
    if (negative)
        ++digits;
    UnsignedT magnitude = 0;
    if (text.empty() || (negative && *digits == '\0') || !ReadDigits(digits, magnitude))
        return Refused();
    value = static_cast<SignedT>(negative ? static_cast<UnsignedT>(UnsignedT(0) - magnitude) : magnitude);
    return nxErrorEnum();
}

/// The value of checked digits with at most one separator, gathered in doubles digit by digit.
double GatherInDoubles(char const* text, char separator)
{
    double value = 0.0;
    double divisor = 1.0;
    bool behindSeparator = false;
    for (; *text != '\0'; ++text)
    {
        if (*text == separator)
        {
            behindSeparator = true;
            continue;
        }
        value = value * 10.0 + nxDigits::ValueOf(*text);
        if (behindSeparator)
            divisor *= 10.0;
    }
    return value / divisor;
}

int ToUpperByte(char c)
{
    return std::toupper(static_cast<unsigned char>(c));
}

int ToLowerByte(char c)
{
    return std::tolower(static_cast<unsigned char>(c));
}

} // namespace

std::string nxStringHelper::GetAsString(bool value)
{
    return value ? "TRUE" : "FALSE";
}

std::string nxStringHelper::GetAsString(char value)
{
    std::string text;
    Append(text, static_cast<signed char>(value));
    return text;
}

std::string nxStringHelper::GetAsString(short value)
{
    return TextOf(value);
}

std::string nxStringHelper::GetAsString(int value)
{
    return TextOf(value);
}

std::string nxStringHelper::GetAsString(long value)
{
    return TextOf(value);
}

std::string nxStringHelper::GetAsString(long long value)
{
    return TextOf(value);
}

std::string nxStringHelper::GetAsString(unsigned char value)
{
    return TextOf(value);
}

std::string nxStringHelper::GetAsString(unsigned short value)
{
    return TextOf(value);
}

std::string nxStringHelper::GetAsString(unsigned int value)
{
    return TextOf(value);
}

std::string nxStringHelper::GetAsString(unsigned long long value)
{
    return TextOf(value);
}

std::string nxStringHelper::GetAsString(double value)
{
    std::string text;
    Append(text, value, maximumPrecision);
    return text;
}

std::string nxStringHelper::GetAsString(double value, unsigned int precision)
{
    std::string text;
    Append(text, value, precision);
    return text;
}

std::string nxStringHelper::GetAsString(float value)
{
    return GetAsString(static_cast<double>(value));
}

std::string nxStringHelper::GetAsString(std::string const& value)
{
    return value;
}

std::string nxStringHelper::GetAsString(nxEnum const& value)
{
    return value.GetShortDescription();
}

void nxStringHelper::AppendAsString(std::string& out, bool value)
{
    out.append(value ? "TRUE" : "FALSE");
}

void nxStringHelper::AppendAsString(std::string& out, char value)
{
    Append(out, static_cast<signed char>(value));
}

void nxStringHelper::AppendAsString(std::string& out, short value)
{
    Append(out, value);
}

void nxStringHelper::AppendAsString(std::string& out, int value)
{
    Append(out, value);
}

void nxStringHelper::AppendAsString(std::string& out, long long value)
{
    Append(out, value);
}

void nxStringHelper::AppendAsString(std::string& out, unsigned char value)
{
    Append(out, value);
}

void nxStringHelper::AppendAsString(std::string& out, unsigned short value)
{
    Append(out, value);
}

void nxStringHelper::AppendAsString(std::string& out, unsigned int value)
{
    Append(out, value);
}

void nxStringHelper::AppendAsString(std::string& out, unsigned long long value)
{
    Append(out, value);
}

void nxStringHelper::AppendAsString(std::string& out, double value)
{
    Append(out, value, maximumPrecision);
}

void nxStringHelper::AppendAsString(std::string& out, double value, unsigned int precision)
{
    Append(out, value, precision);
}

void nxStringHelper::AppendAsString(std::string& out, float value)
{
    AppendAsString(out, static_cast<double>(value));
}

void nxStringHelper::AppendAsString(std::string& out, std::string const& value)
{
    out.append(value);
}

void nxStringHelper::AppendAsString(std::string& out, char const* value)
{
    if (value != nullptr)
        out.append(value);
}

void nxStringHelper::AppendAsString(std::string& out, nxEnum const& value)
{
    out.append(value.GetShortDescription());
}

nxErrorEnum nxStringHelper::SetFromString(std::string const& text, unsigned int& value)
{
    return SetUnsigned(text, value);
}

nxErrorEnum nxStringHelper::SetFromString(std::string const& text, unsigned short& value)
{
    return SetUnsigned(text, value);
}

nxErrorEnum nxStringHelper::SetFromString(std::string const& text, unsigned long& value)
{
    return SetUnsigned(text, value);
}

nxErrorEnum nxStringHelper::SetFromString(std::string const& text, unsigned long long& value)
{
    return SetUnsigned(text, value);
}

nxErrorEnum nxStringHelper::SetFromString(std::string const& text, int& value)
{
    return SetSigned(text, value);
}

nxErrorEnum nxStringHelper::SetFromString(std::string const& text, short& value)
{
    return SetSigned(text, value);
}

nxErrorEnum nxStringHelper::SetFromString(std::string const& text, long& value)
{
    return SetSigned(text, value);
}

nxErrorEnum nxStringHelper::SetFromString(std::string const& text, long long& value)
{
    return SetSigned(text, value);
}

nxErrorEnum nxStringHelper::SetFromString(std::string const& text, bool& value)
{
    value = text == "TRUE";
    return value || text == "FALSE" ? nxErrorEnum() : Refused();
}

nxErrorEnum nxStringHelper::SetFromString(std::string const& text, double& value, char separator)
{
    bool const negative = text.starts_with('-');
    char const* const digits = text.c_str() + (negative ? 1 : 0);
    nxDigits::Number number;
    if (!nxDigits::Read(digits, separator, number))
        return Refused();
    // Up to here every step of gathering in doubles is exact, so that one division gives the same double.
    constexpr unsigned long long largestExact = 1ull << 53;
    bool const exact = number.count < nxDigits::maximum && number.gathered <= largestExact;
    double const magnitude = exact ? static_cast<double>(static_cast<long long>(number.gathered)) /
                                         nxPowersOfTen::asDouble[number.decimals]
                                   : GatherInDoubles(digits, separator);
    value = negative ? -magnitude : magnitude;
    return nxErrorEnum();
}

nxErrorEnum nxStringHelper::SetFromString(std::string const& text, std::string& value)
{
    value = text;
    return nxErrorEnum();
}

nxErrorEnum nxStringHelper::SetFromString(std::string const& text, nxEnum& value)
{
    return value.SetFromShortDescriptionString(text) ? nxErrorEnum() : Refused();
}

nxErrorEnum nxStringHelper::SetFromStringView(std::string_view const& text, unsigned int& value)
{
    return nxDigits::ReadAll(text, value) ? nxErrorEnum() : Refused();
}

void nxStringHelper::LeftTrim(std::string& text)
{
    text.erase(0, text.find_first_not_of(nxBlanks));
}

void nxStringHelper::RightTrim(std::string& text)
{
    text.erase(text.find_last_not_of(nxBlanks) + 1); // npos + 1 is 0: nothing but blanks
}

void nxStringHelper::RightTrim(std::string& text, std::string const& set)
{
    text.erase(text.find_last_not_of(set) + 1); // npos + 1 is 0: nothing but the set
}

std::string nxStringHelper::GetLeftTrimmed(std::string const& text)
{
    std::string trimmed(text);
    LeftTrim(trimmed);
    return trimmed;
}

std::string nxStringHelper::GetRightTrimmed(std::string const& text)
{
    std::string trimmed(text);
    RightTrim(trimmed);
    return trimmed;
}

void nxStringHelper::Strip(std::string& text, char c)
{
    std::erase(text, c);
}

void nxStringHelper::Replace(std::string& text, std::string const& from, std::string const& to)
{
    if (from.empty())
        return;
    std::size_t at = text.find(from);
    while (at != std::string::npos)
    {
        text.replace(at, from.size(), to);
        at = text.find(from, at + to.size());
    }
}

void nxStringHelper::PadLeft(std::string& text, unsigned int const& width, char const& fill)
{
    if (text.size() < width)
        text.insert(0, width - text.size(), fill);
}

void nxStringHelper::PadRight(std::string& text, unsigned int const& width, char const& fill)
{
    if (text.size() < width)
        text.append(width - text.size(), fill);
}

void nxStringHelper::ToUpper(std::string& text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return static_cast<char>(ToUpperByte(c)); });
}

void nxStringHelper::ToLower(std::string& text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return static_cast<char>(ToLowerByte(c)); });
}

bool nxStringHelper::IsUppercase(char c)
{
    return c >= 'A' && c <= 'Z';
}

bool nxStringHelper::IsLowercase(char c)
{
    return c >= 'a' && c <= 'z';
}

std::string nxStringHelper::GetUppercaseAndUnderscoreFormatted(std::string const& text)
{
    std::string formatted;
    formatted.reserve(text.size() + text.size() / 4);
    char before = '\0';
    for (char const c : text)
    {
        if (IsUppercase(c) && IsLowercase(before))
            formatted.push_back('_');
        formatted.push_back(c);
        before = c;
    }
    ToUpper(formatted);
    return formatted;
}

bool nxStringHelper::Compare(std::string const& left, std::string const& right,
                             nxCaseSensitivityEnum const& sensitivity)
{
    if (sensitivity == NX_CASE_SENSITIVE)
        return left == right;
    if (sensitivity == NX_CASE_INSENSITIVE)
    {
        return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                          [](char a, char b) { return ToUpperByte(a) == ToUpperByte(b); });
    }
    return false;
}

int nxStringHelper::CompareAlphabetically(std::string const& left, std::string const& right,
                                          nxCaseSensitivityEnum const& sensitivity)
{
    bool const sensitive = sensitivity == NX_CASE_SENSITIVE;
    if (!sensitive && sensitivity != NX_CASE_INSENSITIVE)
        return 0;
    char const* a = left.c_str();
    char const* b = right.c_str();
    for (;; ++a, ++b)
    {
        int const one = sensitive ? static_cast<unsigned char>(*a) : ToLowerByte(*a);
        int const other = sensitive ? static_cast<unsigned char>(*b) : ToLowerByte(*b);
        if (one != other)
            return one < other ? -1 : 1;
        if (*a == '\0' || *b == '\0')
            return 0;
    }
}
