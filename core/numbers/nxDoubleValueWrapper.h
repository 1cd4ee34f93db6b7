#pragma once

#include "core/platform/nxExport.h"
#include "core/vocabulary/nxErrorEnum.h"
#include "core/vocabulary/nxInitalizers.h"
#include "core/vocabulary/nxValueStatusEnum.h"

#include <string>
#include <type_traits>

/// @file
/// A double that can be null or stand for "no change".

/// Two whole numbers that a double holds exactly mean null and "no change".
///
/// Holds one `double` and nothing else. It converts to its double, with null and "no change" as their numbers, and
/// arithmetic takes no notice of them: null plus 1 is the valid 4503599627370496.
///
/// Comparisons with the wrapper on the left hold two numbers for equal that differ by less than 1e-8. With a number on
/// the left of `<` and its kin it is a comparison of plain doubles.
class NX_CORE_API nxDoubleValueWrapper
{
public:
    static constexpr double nullValue = 4503599627370495.0;     // 2^52 - 1
    static constexpr double noChangeValue = 4503599627370494.0; // 2^52 - 2
    static constexpr double tolerance = 1e-8;

    nxDoubleValueWrapper() : _value(nullValue)
    {
    }

    nxDoubleValueWrapper(double value) : _value(value)
    {
    }

    /// The two tags are crossed over, in this class alone: this one makes a null. Old callers count on it; new code
    /// uses GetNoChangeInstance().
    nxDoubleValueWrapper(nxNoChangeInitalizer) : _value(nullValue)
    {
    }

    /// Makes a "no change"; see above. New code uses GetNullInstance().
    nxDoubleValueWrapper(nxNullInitalizer) : _value(noChangeValue)
    {
    }

    static nxDoubleValueWrapper GetNullInstance();
    static nxDoubleValueWrapper GetNoChangeInstance();

    void SetNull()
    {
        _value = nullValue;
    }

    void SetNoChange()
    {
        _value = noChangeValue;
    }

    bool IsNull() const
    {
        return _value == nullValue;
    }

    bool IsNoChange() const
    {
        return _value == noChangeValue;
    }

    bool IsValid() const
    {
        return !IsNull() && !IsNoChange();
    }

    nxValueStatusEnum GetStatus() const;

    operator double() const
    {
        return _value;
    }

    /// @name Comparison with tolerance; null and "no change" count as their numbers
    /// @{
    bool operator==(double right) const
    {
        return _value - right < tolerance && right - _value < tolerance;
    }

    bool operator!=(double right) const
    {
        return !(*this == right);
    }

    bool operator<(double right) const
    {
        return !(*this == right) && _value < right;
    }

    bool operator<=(double right) const
    {
        return *this == right || _value < right;
    }

    bool operator>(double right) const
    {
        return !(*this == right) && _value > right;
    }

    bool operator>=(double right) const
    {
        return *this == right || _value > right;
    }

    bool operator==(nxDoubleValueWrapper const& right) const
    {
        return *this == right._value;
    }

    bool operator!=(nxDoubleValueWrapper const& right) const
    {
        return *this != right._value;
    }
    /// @}

    /// @name Arithmetic on the plain doubles
    /// @{
    double operator+(double right) const
    {
        return _value + right;
    }

    double operator-(double right) const
    {
        return _value - right;
    }

    double operator*(double right) const
    {
        return _value * right;
    }

    double operator/(double right) const
    {
        return _value / right;
    }

    nxDoubleValueWrapper& operator+=(double right)
    {
        _value += right;
        return *this;
    }

    nxDoubleValueWrapper& operator-=(double right)
    {
        _value -= right;
        return *this;
    }

    nxDoubleValueWrapper& operator*=(double right)
    {
        _value *= right;
        return *this;
    }

    nxDoubleValueWrapper& operator/=(double right)
    {
        _value /= right;
        return *this;
    }
    /// @}

    // Exact matches for the other numbers: `wrapper == 1` would be ambiguous between the members above and the
    // comparison of plain doubles.
    // clang-format off
    template <class T> requires std::is_arithmetic_v<T>
    bool operator==(T right) const { return *this == static_cast<double>(right); }
    template <class T> requires std::is_arithmetic_v<T>
    bool operator!=(T right) const { return *this != static_cast<double>(right); }
    template <class T> requires std::is_arithmetic_v<T>
    bool operator<(T right) const { return *this < static_cast<double>(right); }
    template <class T> requires std::is_arithmetic_v<T>
    bool operator<=(T right) const { return *this <= static_cast<double>(right); }
    template <class T> requires std::is_arithmetic_v<T>
    bool operator>(T right) const { return *this > static_cast<double>(right); }
    template <class T> requires std::is_arithmetic_v<T>
    bool operator>=(T right) const { return *this >= static_cast<double>(right); }
    template <class T> requires std::is_arithmetic_v<T>
    double operator+(T right) const { return *this + static_cast<double>(right); }
    template <class T> requires std::is_arithmetic_v<T>
    double operator-(T right) const { return *this - static_cast<double>(right); }
    template <class T> requires std::is_arithmetic_v<T>
    double operator*(T right) const { return *this * static_cast<double>(right); }
    template <class T> requires std::is_arithmetic_v<T>
    double operator/(T right) const { return *this / static_cast<double>(right); }
    // clang-format on

    /// Of two valid wrappers the larger or smaller, `a` within the tolerance; the valid one of two; `b` if none is.
    static nxDoubleValueWrapper GetMax(nxDoubleValueWrapper const& a, nxDoubleValueWrapper const& b);
    static nxDoubleValueWrapper GetMin(nxDoubleValueWrapper const& a, nxDoubleValueWrapper const& b);

    /// Empty unless valid; else as nxStringHelper writes a double.
    std::string GetAsString() const;
    /// NO_CHANGE for that state; all else as a double, a null too, which reads 4.503600e+15.
    std::string GetAsLogString() const;

    /// Reads a double with '.' before its decimals.
    /// @return NX_ERR_INVALID_PARAMETER for anything else, which leaves a null.
    nxErrorEnum SetFromString(std::string const& text);

private:
    double _value;
};
