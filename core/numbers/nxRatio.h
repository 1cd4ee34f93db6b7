#pragma once

#include "core/platform/nxExport.h"
#include "core/vocabulary/nxErrorEnum.h"
#include "core/vocabulary/nxValueStatusEnum.h"

#include <string>

/// @file
/// A ratio of two whole numbers, such as 1:2.

/// Two unsigned numbers that can be null or stand for "no change" together.
///
/// Not reduced: 1:2 and 2:4 are different ratios. A valid one may hold a zero only by the constructor.
class NX_CORE_API nxRatio
{
public:
    /// Null, with 0:0.
    nxRatio() noexcept : _left(0), _right(0), _status(NX_NULL)
    {
    }

    /// Valid, whatever the numbers.
    nxRatio(unsigned int left, unsigned int right) noexcept : _left(left), _right(right), _status(NX_VALID)
    {
    }

    /// Keeps both numbers; null if one of them is zero.
    void SetValue(unsigned int const& left, unsigned int const& right) noexcept
    {
        _Set(left, right, left != 0 && right != 0 ? NX_VALID : NX_NULL);
    }

    void SetNull() noexcept ///< With 0:0.
    {
        _Set(0, 0, NX_NULL);
    }

    void SetNoChange() noexcept ///< With 0:0.
    {
        _Set(0, 0, NX_NOCHANGE);
    }

    bool IsValid() const noexcept
    {
        return _status == NX_VALID;
    }

    bool IsNull() const noexcept
    {
        return _status == NX_NULL;
    }

    bool IsNoChange() const noexcept
    {
        return _status == NX_NOCHANGE;
    }

    unsigned int GetLHS() const noexcept ///< As held, whatever the state.
    {
        return _left;
    }

    unsigned int GetRHS() const noexcept ///< As held, whatever the state.
    {
        return _right;
    }

    /// Reads "1:2": digits, a colon, digits. Too large a number wraps.
    /// @return NX_ERR_INVALID_PARAMETER for anything else and for a zero on either side, which leaves a null with 0:0.
    nxErrorEnum SetFromString(std::string const& text);
    std::string GetAsString() const;    ///< Empty unless valid.
    std::string GetAsLogString() const; ///< "NULL" and "NO_CHANGE" for the other two states.

    /// @name Comparison
    /// Equal are two nulls, two "no change" or two valid ratios of the same numbers. Null is below "no change" and both
    /// are below every valid ratio. Two valid ones are ordered by their cross products, which wrap in 32 bits, so
    /// that 1:2 is neither equal to nor below 2:4, and is above it.
    /// @{
    bool operator==(nxRatio const& right) const noexcept
    {
        if (!IsValid() || !right.IsValid())
            return _status == right._status; // the numbers of a null don't count
        return _left == right._left && _right == right._right;
    }

    bool operator!=(nxRatio const& right) const noexcept
    {
        return !(*this == right);
    }

    bool operator<(nxRatio const& right) const;
    bool operator<=(nxRatio const& right) const;
    bool operator>(nxRatio const& right) const;
    bool operator>=(nxRatio const& right) const;
    /// @}

private:
    void _Set(unsigned int left, unsigned int right, nxEnumValue status) noexcept
    {
        _left = left;
        _right = right;
        _status = nxValueStatusEnum(status);
    }

    unsigned int _left;
    unsigned int _right;
    nxValueStatusEnum _status;
};
