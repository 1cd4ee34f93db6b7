#pragma once

#include "core/numbers/nxArithmetic.h"
#include "core/platform/nxExport.h"
#include "core/vocabulary/nxErrorEnum.h"
#include "core/vocabulary/nxInitalizers.h"
#include "core/vocabulary/nxRoundingMethodEnum.h"
#include "core/vocabulary/nxValueStatusEnum.h"

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <string>

class nxPriceManipulator;
class nxSimpleAsciiStringWriter;
template <class WriterT>
class nxOStream;

/// @file
/// The platform's number for prices, quantities of money and rates.

/// A signed 64-bit integer, scaled by a power of ten that travels with it, or null, or "no change".
///
/// The number is value / 10^places: 1.25 is value 125 at two places, or 1250 at three; neither becomes the other by
/// itself. A plain value without heap memory, guarded by its owner where threads share it. Nothing throws or logs.
///
/// Sums of numbers with the same places, and products of numbers with none, are exact integers that wrap. Everything
/// else goes through doubles and is rounded, half up, to the larger of the two operands' places: 1.5 * 1.5 is 2.3.
/// Prices are stored and compared by these very results, so they are never to be made more exact.
///
/// Null and "no change" are states, not errors: an operator whose operands are not both valid gives its left operand,
/// so null + 5 is null and 5 + null is 5. Overflow and division by zero are not detected: 5 / 0 is a valid 0, and
/// 5.0 / 0 a valid -2^63 at one place.
///
/// `separator` is the character before the decimals.
///
/// @code
/// nxDecimal price("101.37");
/// price.Round(nxDecimal(0.25, 2), NX_ROUNDING_METHOD_DOWN);
/// price += nxDecimal(1, 2);       // one whole unit, at two places
/// price.GetAsString();            // "102.25"
/// @endcode
class NX_CORE_API nxDecimal
{
public:
    /// Most bytes that the text forms write into a caller's buffer: sign, 19 digits, separator, 12 decimals, zero byte.
    static constexpr std::size_t maximumTextSize = 34;

    /// A valid 0 with no places.
    nxDecimal() : _value(0), _decimalPlaces(0), _status(NX_VALID)
    {
    }

    nxDecimal(nxNullInitalizer);
    nxDecimal(nxNoChangeInitalizer);

    /// `wholeUnits` is what the number is worth: nxDecimal(5, 2) is 5.00, with value 500. Wraps.
    nxDecimal(long long wholeUnits, unsigned char places);
    template <std::integral IntegerT>
    nxDecimal(IntegerT wholeUnits, unsigned char places)
        : nxDecimal(static_cast<long long>(wholeUnits), places)
    {
    }

    /// As SetFromDouble().
    nxDecimal(double value, unsigned char places);
    /// numerator / denominator in doubles, then as SetFromDouble().
    nxDecimal(long long numerator, long long denominator, unsigned char places);
    /// As SetFromString(), but a text that is refused gives a null.
    explicit nxDecimal(std::string const& text, char separator = '.');

    /// The raw form: (500, 2) is 5.00.
    static nxDecimal ConstructFromValueAndDecimalPlaces(long long value, unsigned char places)
    {
        nxDecimal raw;
        raw._value = value;
        raw._decimalPlaces = places;
        return raw;
    }

    static nxDecimal GetNullDecimal();
    static nxDecimal GetNoChangeDecimal();

    nxValueStatusEnum const& GetStatus() const
    {
        return _status;
    }

    bool IsValid() const
    {
        return _status == NX_VALID;
    }

    bool IsNull() const
    {
        return _status == NX_NULL;
    }

    bool IsNoChange() const
    {
        return _status == NX_NOCHANGE;
    }

    void SetNull();
    void SetNoChange();

    bool IsZero() const ///< False unless valid.
    {
        return IsValid() && _value == 0;
    }

    bool IsPositive() const ///< False unless valid.
    {
        return _value > 0;
    }

    bool IsNegative() const ///< False unless valid.
    {
        return _value < 0;
    }

    long long GetValue() const ///< The number times 10^places; 0 unless valid.
    {
        return _value;
    }

    unsigned char GetDecimalPlaces() const ///< 0 unless valid.
    {
        return _decimalPlaces;
    }

    /// Truncated toward zero: -1 for -1.25. 0 where 10^places, which wraps from 20 places on, has become 0.
    long long GetIntegerPart() const;
    /// The decimals as a number at the decimal's own places, never negative: 25 for -1.25.
    unsigned long long GetFractionalPart() const;

    /// @name The state in two plain fields, for transport
    /// Null is 0x7FFFFFFFFFFFFFFF and "no change" 0x7FFFFFFFFFFFFFFE, each with places 0; the setter looks at the
    /// integer alone to know them.
    /// @{
    void GetAsEncodedValues(long long& value, unsigned char& places) const;
    void SetFromEncodedValues(long long const& value, unsigned char const& places);
    /// @}

    void InvertSign();
    /// Changes the sign of the object itself and returns it: `a - -b` alters b.
    nxDecimal& operator-();
    void Abs();
    static nxDecimal Abs(nxDecimal const& value);

    /// Drops trailing zeros, down to `minimumPlaces`.
    void Normalise(unsigned char const& minimumPlaces);
    /// Adds zeros, wrapping, or drops digits without rounding.
    /// @param onlyDropZeros  true keeps every digit but trailing zeros, so that more places may stay than asked for.
    void SetDecimalPlaces(unsigned char const& places, bool onlyDropZeros);

    nxDecimal operator+(nxDecimal const& right) const
    {
        nxDecimal result(*this);
        return result += right;
    }

    nxDecimal operator-(nxDecimal const& right) const
    {
        nxDecimal result(*this);
        return result -= right;
    }

    nxDecimal operator*(nxDecimal const& right) const
    {
        nxDecimal result(*this);
        result._Multiply(right);
        return result;
    }

    nxDecimal operator/(nxDecimal const& right) const
    {
        nxDecimal result(*this);
        return result /= right;
    }

    nxDecimal& operator+=(nxDecimal const& right);
    nxDecimal& operator-=(nxDecimal const& right);
    nxDecimal& operator*=(nxDecimal const& right);
    nxDecimal& operator/=(nxDecimal const& right);

    /// With the same places the integers decide; otherwise two doubles are equal that differ by no more than the
    /// double's epsilon, whatever their size. A null equals a null, "no change" equals "no change".
    bool operator==(nxDecimal const& right) const;
    bool operator!=(nxDecimal const& right) const;
    /// Null is below "no change", and both are below every number.
    bool operator<(nxDecimal const& right) const;
    bool operator<=(nxDecimal const& right) const;
    bool operator>(nxDecimal const& right) const;
    bool operator>=(nxDecimal const& right) const;

    /// Of two valid decimals the smaller or larger, `a` on a tie; the valid one of two; `b` if none is.
    static nxDecimal GetMin(nxDecimal const& a, nxDecimal const& b);
    static nxDecimal GetMax(nxDecimal const& a, nxDecimal const& b);

    /// Makes this a multiple of `step`, with the step's places. DOWN is toward minus infinity and UP toward plus
    /// infinity; a tie of NEAREST (and of any unknown method) goes away from zero, of MODIFIED_NEAREST toward zero.
    ///
    /// The quotient is itself rounded, at the larger of the places, before it is truncated: 9.9 in steps of 10.0 is
    /// 10.0 by DOWN and 20.0 by UP, where 9.90 and 10.00 give 0.00 and 10.00.
    ///
    /// Leaves a decimal that is not valid alone, and does nothing for a step that is not valid or zero.
    void Round(nxDecimal const& step, nxRoundingMethodEnum const& method);
    /// With the manipulator's tick, or its tick table's increment at this price, as the step.
    void Round(nxPriceManipulator const& manipulator, nxRoundingMethodEnum const& method);

    double GetAsDouble() const ///< 0 unless valid.
    {
        return IsValid() ? static_cast<double>(_value) / nxArithmetic::PowerOfTenAsDouble(_decimalPlaces)
                         : 0.0;
    }

    /// Rounds half up, toward plus infinity, at `places`: 1.25 is 1.3 and -1.25 is -1.2 at one. What is no number or
    /// out of range counts as -2^63 in each step. Always valid afterwards.
    void SetFromDouble(double const& value, unsigned char places);

    /// Takes an optional sign and digits with at most one separator, up to the first zero byte: "1.50", "+5.", "-.5".
    /// Keeps the decimals as they are counted, 256 of them counting as 0. Any number of digits is taken, wrapping.
    /// @return NX_ERR_INVALID_PARAMETER, with the decimal untouched, for anything else.
    nxErrorEnum SetFromString(std::string const& text, char separator = '.');

    /// @name Text, empty unless valid
    /// All places are shown, but no more than twelve; what lies beyond is cut off. A negative number keeps its sign even
    /// if all digits shown are zeros. The forms for a buffer allocate nothing and write at most maximumTextSize bytes.
    /// @{
    void GetAsString(char* buffer, char separator = '.') const;
    void GetAsString(std::string& text, char separator = '.') const;
    std::string GetAsString(char separator = '.') const;
    void AppendAsString(std::string& text, char separator = '.') const;
    /// With at most `maximumPlaces`; 0 leaves out the separator too.
    std::string GetAsTrimmedString(unsigned char const& maximumPlaces, char separator = '.') const;
    /// @}

    /// @name Text that gives NULL and NO_CHANGE for the other two states
    /// @{
    void GetAsLogString(char* buffer, char separator = '.') const;
    void GetAsLogString(std::string& text, char separator = '.') const;
    std::string GetAsLogString(char separator = '.') const;
    void AppendAsLogString(std::string& text, char separator = '.') const;
    std::string GetAsTrimmedLogString(unsigned char const& maximumPlaces, char separator = '.') const;
    /// @}

    /// As the plain text, but with all places; the decimals are left out from 63 places on.
    void Write(nxOStream<nxSimpleAsciiStringWriter>& stream, char separator = '.') const;

private:
    // By value, for the inline operators: a reference would keep the sum out of a register.
    void _SetFromDouble(double value, unsigned char places);
    void _Multiply(nxDecimal const& right);
    void _Clear(nxEnumValue status);
    void _Append(std::string& out, unsigned int maximumPlaces, char separator) const;
    char const* _GetStatusWord() const; // for the log; empty if valid

    // A decimal that is not valid has value 0 and places 0.
    long long _value;
    unsigned char _decimalPlaces;
    nxValueStatusEnum _status;
};

inline void nxDecimal::_Multiply(nxDecimal const& right)
{
    if (!IsValid() || !right.IsValid())
        return;
    if (_decimalPlaces == 0 && right._decimalPlaces == 0)
        _value = nxArithmetic::Multiply(_value, right._value);
    else
        _SetFromDouble(GetAsDouble() * right.GetAsDouble(), std::max(_decimalPlaces, right._decimalPlaces));
}

inline nxDecimal& nxDecimal::operator+=(nxDecimal const& right)
{
    if (IsValid() && right.IsValid())
    {
        if (_decimalPlaces == right._decimalPlaces)
        {
            _value = nxArithmetic::Add(_value, right._value);
        }
        else
        {
            _SetFromDouble(GetAsDouble() + right.GetAsDouble(),
                           std::max(_decimalPlaces, right._decimalPlaces));
        }
    }
    return *this;
}

inline nxDecimal& nxDecimal::operator-=(nxDecimal const& right)
{
    if (IsValid() && right.IsValid())
    {
        if (_decimalPlaces == right._decimalPlaces)
        {
            _value = nxArithmetic::Subtract(_value, right._value);
        }
        else
        {
            _SetFromDouble(GetAsDouble() - right.GetAsDouble(),
                           std::max(_decimalPlaces, right._decimalPlaces));
        }
    }
    return *this;
}
