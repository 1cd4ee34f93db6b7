#pragma once

/// @file
/// A whole number that can be null or stand for "no change".

/// Two numbers of `T` are given up to mean null and "no change"; all others are valid.
///
/// Holds one `T` and nothing else, so that it may lie in messages and files. Constructing it from a number that is one
/// of the two gives that state. Two wrappers are equal when what they hold is.
///
/// @tparam NullValue, NoChangeValue  cast to `T`, so that -1 and -2 are the two largest numbers of an unsigned type.
///
/// @code
/// nxVolume volume;                     // null
/// volume = 25;
/// if (volume.IsValid())
///     total += volume.GetValue();
/// @endcode
template <class T, long long NullValue, long long NoChangeValue>
class nxValueWrapper
{
public:
    static constexpr T nullValue = static_cast<T>(NullValue);
    static constexpr T noChangeValue = static_cast<T>(NoChangeValue);

    /// Null.
    constexpr nxValueWrapper() : _value(nullValue)
    {
    }

    constexpr nxValueWrapper(T value) : _value(value)
    {
    }

    constexpr nxValueWrapper& operator=(T value)
    {
        _value = value;
        return *this;
    }

    constexpr T GetValue() const ///< As held: null and "no change" give their numbers.
    {
        return _value;
    }

    constexpr bool IsNull() const
    {
        return _value == nullValue;
    }

    constexpr bool IsNoChange() const
    {
        return _value == noChangeValue;
    }

    constexpr bool IsValid() const
    {
        return !IsNull() && !IsNoChange();
    }

    constexpr void SetNull()
    {
        _value = nullValue;
    }

    constexpr void SetNoChange()
    {
        _value = noChangeValue;
    }

    friend constexpr bool operator==(nxValueWrapper left, nxValueWrapper right)
    {
        return left._value == right._value;
    }

private:
    T _value;
};

/// Volumes, user numbers, ISO dates and counts of ticks.
using nxVolume = nxValueWrapper<unsigned int, -1, -2>;
