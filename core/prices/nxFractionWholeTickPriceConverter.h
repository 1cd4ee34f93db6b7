#pragma once

#include "core/prices/nxFractionPriceConverter.h"

/// Whole numbers of the unit, with no fraction and no separator: 101.0 is "101".
///
/// The one fraction format whose tick is the host's: until SetMinimumTickIncrement() no text is taken. The text shows
/// the price cut toward zero.
class NX_CORE_API nxFractionWholeTickPriceConverter : public nxFractionPriceConverter
{
public:
    nxFractionWholeTickPriceConverter();

    /// Takes the tick, as nxPriceConverter does.
    bool SetMinimumTickIncrement(nxDecimal const& tick) override;

    /// Takes digits with or without a '-' in front, and checks the price against the tick.
    bool SetPriceFromString(std::string const& text) override;
    std::string const& GetPriceAsString() override;
};
