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
    nxRatio();
    /// Valid, whatever the numbers.
    nxRatio(unsigned int left, unsigned int right);

    /// Keeps both numbers; null if one of them is zero.
    void SetValue(unsigned int const& left, unsigned int const& right);
    void SetNull();     ///< With 0:0.
    void SetNoChange(); ///< With 0:0.

    bool IsValid() const;
    bool IsNull() const;
    bool IsNoChange() const;
    unsigned int GetLHS() const; ///< As held, whatever the state.
    unsigned int GetRHS() const; ///< As held, whatever the state.

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
    bool operator==(nxRatio const& right) const;
    bool operator!=(nxRatio const& right) const;
    bool operator<(nxRatio const& right) const;
    bool operator<=(nxRatio const& right) const;
    bool operator>(nxRatio const& right) const;
    bool operator>=(nxRatio const& right) const;
    /// @}

private:
    void _Set(unsigned int left, unsigned int right, nxEnumValue status);

    unsigned int _left;
    unsigned int _right;
    nxValueStatusEnum _status;
};
