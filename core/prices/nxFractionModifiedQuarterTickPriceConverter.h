#pragma once

#include "core/prices/nxFractionPriceConverter.h"

/// Quarters, written as the first digit of 0, 25, 50, 75: 712.75 is "712-7".
class NX_CORE_API nxFractionModifiedQuarterTickPriceConverter : public nxFractionPriceConverter
{
public:
    nxFractionModifiedQuarterTickPriceConverter();
    std::string const& GetPriceAsString() override;

protected:
    bool _IsValidFractionLength(unsigned short length) override;
    bool _ParseFirstDigit(unsigned short& digit, unsigned short& accumulator, double& value) override;
};
