#pragma once

#include "core/prices/nxPriceConverter.h"

/// Prices as decimals, or as decimals of a ratio: with the ratio 0.01 the price 9850 is "98.50".
///
/// A text is shown at the places of the tick in force, which is that of the manipulator's table or else the minimum
/// tick, and those of the ratio; at 0 places until a tick is set, and at twelve at most.
class NX_CORE_API nxDecimalPriceConverter : public nxPriceConverter
{
public:
    nxDecimalPriceConverter();

    /// Settles the places of texts too. A ratio that is set later counts from the next tick on. A refused tick leaves
    /// the places.
    bool SetMinimumTickIncrement(nxDecimal const& tick) override;

    /// Checks the price against the tick.
    bool SetPriceFromString(std::string const& text) override;
    std::string const& GetPriceAsString() override;

protected:
    bool _SetPriceRatio(nxDecimal const& ratio) override;

private:
    unsigned char _GetDecimalPlaces() const;
    unsigned char _AddRatioPlaces(unsigned char places) const;

    unsigned char _displayPlaces;
    unsigned char _ratioPlaces;
};
