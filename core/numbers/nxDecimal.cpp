#include "core/numbers/nxDecimal.h"

#include "core/text/nxDigits.h"
#include "core/text/nxOStream.h"
#include "core/text/nxSimpleAsciiStringWriter.h"
#include "core/text/nxStringHelper.h"

#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>

namespace
{

constexpr long long encodedNull = 0x7FFFFFFFFFFFFFFF;
constexpr long long encodedNoChange = 0x7FFFFFFFFFFFFFFE;
constexpr unsigned int mostPlacesShown = 12;
constexpr unsigned int mostPlacesOfPower = 19; // from 20 on, 10^places wraps in 64 bits

/// Magnitude split at the separator.
struct Parts
{
    unsigned long long whole;
    unsigned long long fraction;
};

Parts Split(unsigned long long magnitude, unsigned char places)
{
    unsigned long long const power = nxArithmetic::PowerOfTen(places);
    if (power == 0)
        return {0, magnitude}; // 64 places and more
    return {magnitude / power, magnitude % power};
}

/// The text of a number, measured first and then written backward to where it belongs.
class Text
{
public:
    Text(long long value, unsigned char places, unsigned int maximumPlaces)
        : _digits(nxArithmetic::Magnitude(value)), _wholeStandsApart(places > mostPlacesOfPower),
          _decimals(std::min({maximumPlaces, unsigned{places}, mostPlacesShown})), _negative(value < 0)
    {
        auto const cut = static_cast<unsigned char>(places - _decimals);
        if (_wholeStandsApart)
        {
            Parts const parts = Split(_digits, places);
            _whole = parts.whole;
            _digits = cut <= mostPlacesOfPower ? parts.fraction / nxArithmetic::PowerOfTen(cut) : 0;
        }
        else if (cut != 0)
        {
            _digits /= nxArithmetic::PowerOfTen(cut);
        }
        unsigned int const digits = _wholeStandsApart ? nxDigits::Count(_whole) + _decimals
                                                      : std::max(nxDigits::Count(_digits), _decimals + 1);
        _length = digits + (_decimals != 0 ? 1 : 0) + (_negative ? 1 : 0);
    }

    std::size_t GetLength() const
    {
        return _length;
    }

    void WriteBackward(char* end, char separator) const
    {
        unsigned long long whole = _wholeStandsApart ? _whole : _digits;
        if (_decimals != 0)
        {
            unsigned long long const rest = nxDigits::WriteLowestBackward(end, _digits, _decimals);
            whole = _wholeStandsApart ? _whole : rest;
            end -= _decimals + 1;
            *end = separator;
        }
        char* const first = nxDigits::WriteBackward(end, whole);
        if (_negative)
            first[-1] = '-';
    }

private:
    unsigned long long _digits; // those shown as one number, the separator to stand before the last of them
    unsigned long long _whole = 0;
    bool _wholeStandsApart; // beyond 19 places the digits before the separator are not those of the number
    unsigned int _decimals;
    bool _negative;
    unsigned int _length;
};

/// Whether all digits of a number, shown with all its places, are made in one word: the usual price.
bool IsShort(long long value, unsigned char places)
{
    constexpr unsigned char mostPlaces = 7;
    return nxDigits::hasWords && places <= mostPlaces &&
           nxArithmetic::Magnitude(value) < nxDigits::Word::limit;
}

/// Writes a short number and no byte behind it.
/// @return the end of the text.
char* WriteShort(char* out, long long value, unsigned char places, char separator)
{
    nxDigits::Word const word =
        nxDigits::WriteWord(static_cast<unsigned int>(nxArithmetic::Magnitude(value)), places + 1u);
    if (value < 0)
        *out++ = '-';
    if (places == 0)
    {
        nxDigits::Word::Put(out, word.bytes, word.count);
        return out + word.count;
    }
    unsigned int const wholeBits = 8 * (word.count - places);
    std::uint64_t const whole = word.bytes & ((std::uint64_t{1} << wholeBits) - 1);
    std::uint64_t const point = std::uint64_t{static_cast<unsigned char>(separator)} << wholeBits;
    std::uint64_t const text = whole | point | word.bytes >> wholeBits << wholeBits << 8;
    char* const end = out + word.count + 1;
    // The last of eight digits has no room beside a separator.
    end[-1] = static_cast<char>(word.bytes >> 8 * (word.count - 1));
    nxDigits::Word::Put(out, text, std::min(word.count + 1, unsigned{sizeof text}));
    return end;
}

/// Below, at or above 0 as the left is less than, equal to or more than the right: the six operators follow from it.
/// Numbers without an order, since a power of ten has wrapped to 0, give "more".
inline int Compare(nxDecimal const& left, nxDecimal const& right)
{
    if (!left.IsValid() || !right.IsValid())
    {
        int const validity = int{left.IsValid()} - int{right.IsValid()};
        return validity != 0 ? validity : int{right.IsNull()} - int{left.IsNull()};
    }
    if (left.GetDecimalPlaces() == right.GetDecimalPlaces())
        return int{left.GetValue() > right.GetValue()} - int{left.GetValue() < right.GetValue()};
    double const leftNumber = left.GetAsDouble();
    double const rightNumber = right.GetAsDouble();
    if (std::fabs(leftNumber - rightNumber) <= std::numeric_limits<double>::epsilon())
        return 0;
    return leftNumber < rightNumber ? -1 : 1;
}

/// Whether the multiple of the step that lies `remainder` below a number is the nearest to it.
/// @param ties  the answer for a number in the middle between two.
bool IsNearest(nxDecimal const& remainder, nxDecimal const& step, bool ties)
{
    nxDecimal const half = step / nxDecimal(2, static_cast<unsigned char>(step.GetDecimalPlaces() + 1));
    int const order = Compare(remainder, half);
    return ties ? order <= 0 : order < 0;
}

} // namespace

nxDecimal::nxDecimal(nxNullInitalizer) : _value(0), _decimalPlaces(0), _status(NX_NULL)
{
}

nxDecimal::nxDecimal(nxNoChangeInitalizer) : _value(0), _decimalPlaces(0), _status(NX_NOCHANGE)
{
}

nxDecimal::nxDecimal(long long wholeUnits, unsigned char places)
    : _value(nxArithmetic::Multiply(wholeUnits, static_cast<long long>(nxArithmetic::PowerOfTen(places)))),
      _decimalPlaces(places), _status(NX_VALID)
{
}

nxDecimal::nxDecimal(double value, unsigned char places) : nxDecimal()
{
    _SetFromDouble(value, places);
}

nxDecimal::nxDecimal(long long numerator, long long denominator, unsigned char places)
    : nxDecimal(static_cast<double>(numerator) / static_cast<double>(denominator), places)
{
}

nxDecimal::nxDecimal(std::string const& text, char separator) : nxDecimal()
{
    if (!SetFromString(text, separator).IsOK())
        SetNull();
}

nxDecimal nxDecimal::GetNullDecimal()
{
    return nxDecimal(nxNullInitalizer{});
}

nxDecimal nxDecimal::GetNoChangeDecimal()
{
    return nxDecimal(nxNoChangeInitalizer{});
}

void nxDecimal::SetNull()
{
    _Clear(NX_NULL);
}

void nxDecimal::SetNoChange()
{
    _Clear(NX_NOCHANGE);
}

void nxDecimal::_Clear(nxEnumValue status)
{
    _value = 0;
    _decimalPlaces = 0;
    _status = nxValueStatusEnum(status);
}

long long nxDecimal::GetIntegerPart() const
{
    auto const whole = static_cast<long long>(Split(nxArithmetic::Magnitude(_value), _decimalPlaces).whole);
    return IsNegative() ? nxArithmetic::Negate(whole) : whole;
}

unsigned long long nxDecimal::GetFractionalPart() const
{
    return Split(nxArithmetic::Magnitude(_value), _decimalPlaces).fraction;
}

void nxDecimal::GetAsEncodedValues(long long& value, unsigned char& places) const
{
    value = IsNull() ? encodedNull : IsNoChange() ? encodedNoChange : _value;
    places = _decimalPlaces;
}

void nxDecimal::SetFromEncodedValues(long long const& value, unsigned char const& places)
{
    if (value == encodedNull)
        SetNull();
    else if (value == encodedNoChange)
        SetNoChange();
    else
        *this = ConstructFromValueAndDecimalPlaces(value, places);
}

void nxDecimal::InvertSign()
{
    _value = nxArithmetic::Negate(_value); // 0 unless valid
}

nxDecimal& nxDecimal::operator-()
{
    InvertSign();
    return *this;
}

void nxDecimal::Abs()
{
    if (IsNegative())
        InvertSign();
}

nxDecimal nxDecimal::Abs(nxDecimal const& value)
{
    nxDecimal result(value);
    result.Abs();
    return result;
}

void nxDecimal::Normalise(unsigned char const& minimumPlaces)
{
    while (_decimalPlaces > minimumPlaces && _value % 10 == 0)
    {
        _value /= 10;
        --_decimalPlaces;
    }
}

void nxDecimal::SetDecimalPlaces(unsigned char const& places, bool onlyDropZeros)
{
    if (!IsValid())
        return;
    if (places < _decimalPlaces && onlyDropZeros)
    {
        Normalise(places);
        return;
    }
    if (places < _decimalPlaces)
    {
        unsigned int const dropped = _decimalPlaces - places;
        auto const power =
            static_cast<long long>(nxArithmetic::PowerOfTen(static_cast<unsigned char>(dropped)));
        _value = dropped < mostPlacesOfPower ? _value / power : 0; // there are at most 19 digits
    }
    else
    {
        auto const added = static_cast<unsigned char>(places - _decimalPlaces);
        _value = nxArithmetic::Multiply(_value, static_cast<long long>(nxArithmetic::PowerOfTen(added)));
    }
    _decimalPlaces = places;
}

nxDecimal& nxDecimal::operator*=(nxDecimal const& right)
{
    _Multiply(right);
    return *this;
}

nxDecimal& nxDecimal::operator/=(nxDecimal const& right)
{
    if (IsValid() && right.IsValid())
        _SetFromDouble(GetAsDouble() / right.GetAsDouble(), std::max(_decimalPlaces, right._decimalPlaces));
    return *this;
}

bool nxDecimal::operator==(nxDecimal const& right) const
{
    return Compare(*this, right) == 0;
}

bool nxDecimal::operator!=(nxDecimal const& right) const
{
    return Compare(*this, right) != 0;
}

bool nxDecimal::operator<(nxDecimal const& right) const
{
    return Compare(*this, right) < 0;
}

bool nxDecimal::operator<=(nxDecimal const& right) const
{
    return Compare(*this, right) <= 0;
}

bool nxDecimal::operator>(nxDecimal const& right) const
{
    return Compare(*this, right) > 0;
}

bool nxDecimal::operator>=(nxDecimal const& right) const
{
    return Compare(*this, right) >= 0;
}

nxDecimal nxDecimal::GetMin(nxDecimal const& a, nxDecimal const& b)
{
    if (a.IsValid() && b.IsValid())
        return b < a ? b : a;
    return a.IsValid() ? a : b;
}

nxDecimal nxDecimal::GetMax(nxDecimal const& a, nxDecimal const& b)
{
    if (a.IsValid() && b.IsValid())
        return a < b ? b : a;
    return a.IsValid() ? a : b;
}

void nxDecimal::Round(nxDecimal const& step, nxRoundingMethodEnum const& method)
{
    if (!IsValid() || !step.IsValid() || step._value == 0)
        return;
    bool const negative = _value < 0;
    bool down = method == NX_ROUNDING_METHOD_DOWN;
    bool up = method == NX_ROUNDING_METHOD_UP;
    nxDecimal magnitude(*this);
    if (negative)
    {
        magnitude.InvertSign();
        std::swap(down, up);
    }

    bool const isWhole = _decimalPlaces == 0 && step._decimalPlaces == 0;
    long long const quotient =
        isWhole ? nxArithmetic::Divide(magnitude._value, step._value) : (magnitude / step).GetIntegerPart();
    nxDecimal rounded = nxDecimal(quotient, 0) * step;
    if (!down)
    {
        nxDecimal const remainder = magnitude - rounded;
        bool const tiesStay = method == NX_ROUNDING_METHOD_MODIFIED_NEAREST;
        bool const stays = up ? remainder == nxDecimal() : IsNearest(remainder, step, tiesStay);
        // Both have the step's places. Prices meet both cases by turns, so that a branch would often be guessed wrong.
        rounded._value =
            nxArithmetic::Add(rounded._value, nxArithmetic::Multiply(step._value, stays ? 0 : 1));
    }
    if (negative)
        rounded.InvertSign(); // of a zero it is a zero
    *this = rounded;
}

void nxDecimal::SetFromDouble(double const& value, unsigned char places)
{
    _SetFromDouble(value, places);
}

void nxDecimal::_SetFromDouble(double value, unsigned char places)
{
    long long const whole = nxArithmetic::ToInt64(value);
    double const fraction = (value - static_cast<double>(whole)) * nxArithmetic::PowerOfTenAsDouble(places);
    auto const power = static_cast<long long>(nxArithmetic::PowerOfTen(places));
    _value = nxArithmetic::Add(nxArithmetic::RoundHalfUp(fraction), nxArithmetic::Multiply(whole, power));
    _decimalPlaces = places;
    _status = nxValueStatusEnum(NX_VALID);
}

nxErrorEnum nxDecimal::SetFromString(std::string const& text, char separator)
{
    char const* digits = text.c_str();
    bool const negative = *digits == '-';
    if (negative || *digits == '+')
        ++digits;
    nxDigits::Number number;
    if (!nxDigits::Read(digits, separator, number))
        return nxErrorEnum(NX_ERR_INVALID_PARAMETER);
    _value = static_cast<long long>(negative ? 0 - number.gathered : number.gathered);
    _decimalPlaces = static_cast<unsigned char>(number.decimals);
    _status = nxValueStatusEnum(NX_VALID);
    return nxErrorEnum();
}

void nxDecimal::GetAsString(char* buffer, char separator) const
{
    if (!IsValid())
    {
        *buffer = '\0';
        return;
    }
    if (IsShort(_value, _decimalPlaces))
    {
        *WriteShort(buffer, _value, _decimalPlaces, separator) = '\0';
        return;
    }
    Text const text(_value, _decimalPlaces, _decimalPlaces);
    char* const end = buffer + text.GetLength();
    *end = '\0';
    text.WriteBackward(end, separator);
}

void nxDecimal::GetAsString(std::string& text, char separator) const
{
    text.clear();
    AppendAsString(text, separator);
}

std::string nxDecimal::GetAsString(char separator) const
{
    return GetAsTrimmedString(_decimalPlaces, separator);
}

void nxDecimal::AppendAsString(std::string& text, char separator) const
{
    _Append(text, _decimalPlaces, separator);
}

std::string nxDecimal::GetAsTrimmedString(unsigned char const& maximumPlaces, char separator) const
{
    std::string text;
    _Append(text, maximumPlaces, separator);
    return text;
}

void nxDecimal::_Append(std::string& out, unsigned int maximumPlaces, char separator) const
{
    if (IsValid())
    {
        if (IsShort(_value, _decimalPlaces) && maximumPlaces >= _decimalPlaces)
        {
            char text[maximumTextSize];
            out.append(text,
                       static_cast<std::size_t>(WriteShort(text, _value, _decimalPlaces, separator) - text));
            return;
        }
        Text const text(_value, _decimalPlaces, maximumPlaces);
        out.resize(out.size() + text.GetLength());
        text.WriteBackward(out.data() + out.size(), separator);
    }
}

void nxDecimal::GetAsLogString(char* buffer, char separator) const
{
    if (IsValid())
        GetAsString(buffer, separator);
    else
        std::strcpy(buffer, _GetStatusWord());
}

void nxDecimal::GetAsLogString(std::string& text, char separator) const
{
    text.clear();
    AppendAsLogString(text, separator);
}

std::string nxDecimal::GetAsLogString(char separator) const
{
    return GetAsTrimmedLogString(_decimalPlaces, separator);
}

void nxDecimal::AppendAsLogString(std::string& text, char separator) const
{
    text.append(_GetStatusWord());
    AppendAsString(text, separator);
}

std::string nxDecimal::GetAsTrimmedLogString(unsigned char const& maximumPlaces, char separator) const
{
    return _GetStatusWord() + GetAsTrimmedString(maximumPlaces, separator);
}

char const* nxDecimal::_GetStatusWord() const
{
    return IsNull() ? "NULL" : IsNoChange() ? "NO_CHANGE" : "";
}

void nxDecimal::Write(nxOStream<nxSimpleAsciiStringWriter>& stream, char separator) const
{
    if (!IsValid())
        return;
    char scratch[64];
    auto const write = [&](int length)
    {
        // A length of 64 and more did not fit; one below zero is larger than any.
        if (static_cast<std::size_t>(length) < sizeof(scratch))
            stream.Write(scratch, static_cast<std::size_t>(length));
    };
    long long const whole = GetIntegerPart();
    auto const fraction = static_cast<long long>(GetFractionalPart());
    if (whole == 0 && IsNegative())
        stream.Write("-", 1);
    write(std::snprintf(scratch, sizeof(scratch), "%lli", whole));
    if (_decimalPlaces != 0)
        write(std::snprintf(scratch, sizeof(scratch), "%c%0*lld", separator, int{_decimalPlaces}, fraction));
}

std::string nxStringHelper::GetAsString(nxDecimal const& value)
{
    return value.GetAsString('.');
}

void nxStringHelper::AppendAsString(std::string& out, nxDecimal const& value)
{
    value.AppendAsString(out, '.');
}

nxErrorEnum nxStringHelper::SetFromString(std::string const& text, nxDecimal& value, char separator)
{
    return value.SetFromString(text, separator);
}
