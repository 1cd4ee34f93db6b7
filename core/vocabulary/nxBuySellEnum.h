#pragma once

#include "core/vocabulary/nxEnum.h"

/// The side of an order or a trade.
class NX_CORE_API nxBuySellEnum : public nxEnum
{
    NX_ENUM_CLASS(nxBuySellEnum, 10, 13)
    NX_ENUM_LESS(nxBuySellEnum)

    /// 'B' or 'S', a blank for anything else.
    char GetAsSingleCharacterCode() const;

    /// "+" for buy, nothing when undefined or no change, "-" for any other number.
    std::string GetSignString() const;

    /// The side of a leg within a strategy that is itself bought or sold: sell of sell is buy. Undefined when
    /// either side is undefined or no change.
    static nxBuySellEnum GetOverallBuySell(nxBuySellEnum const& strategy, nxBuySellEnum const& leg);
};
