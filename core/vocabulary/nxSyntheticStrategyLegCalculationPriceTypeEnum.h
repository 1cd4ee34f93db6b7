#pragma once

#include "core/vocabulary/nxEnum.h"

/// The price of a leg from which the price of a synthetic strategy is calculated.
class NX_CORE_API nxSyntheticStrategyLegCalculationPriceTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxSyntheticStrategyLegCalculationPriceTypeEnum, 15700, 15703)

    /// Sets the value whose token ends in this word: "MID_PRICE"; "LAST" alone stands for the default.
    /// @return false for an unknown word, which leaves the value as it was.
    bool SetFromShortDescriptionStringSuffix(std::string const& suffix);
};
