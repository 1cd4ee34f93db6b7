#include "core/vocabulary/nxBuySellEnum.h"

char nxBuySellEnum::GetAsSingleCharacterCode() const
{
    switch (_value)
    {
    case NX_BUY: return 'B';
    case NX_SELL: return 'S';
    default: return ' ';
    }
}

std::string nxBuySellEnum::GetSignString() const
{
    switch (_value)
    {
    case NX_UNDEFINED:
    case NX_NO_CHANGE: return std::string();
    case NX_BUY: return "+";
    default: return "-";
    }
}

nxBuySellEnum nxBuySellEnum::GetOverallBuySell(nxBuySellEnum const& strategy, nxBuySellEnum const& leg)
{
    auto const isSide = [](nxBuySellEnum const& side) { return !side.IsUndefined() && !side.IsNoChange(); };
    if (!isSide(strategy) || !isSide(leg))
        return nxBuySellEnum();
    return nxBuySellEnum(strategy == leg ? NX_BUY : NX_SELL);
}
