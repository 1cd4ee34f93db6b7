#pragma once

#include "core/vocabulary/nxEnum.h"

/// A currency, by its three-letter code; there is room in the block for more.
class NX_CORE_API nxCurrencyEnum : public nxEnum
{
    NX_ENUM_CLASS(nxCurrencyEnum, 1400, 1450)

    /// The order of the numbers, not of the tokens.
    bool operator<(nxCurrencyEnum const& other) const
    {
        return _LessThan(other);
    }
    bool operator>(nxCurrencyEnum const& other) const
    {
        return _GreaterThan(other);
    }
    bool operator<=(nxCurrencyEnum const& other) const
    {
        return !_GreaterThan(other);
    }
    bool operator>=(nxCurrencyEnum const& other) const
    {
        return !_LessThan(other);
    }
};
