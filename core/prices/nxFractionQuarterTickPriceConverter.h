#pragma once

#include "core/prices/nxFractionPriceConverter.h"

/// Quarters, written as eighths: 712.25 is "712-2".
class NX_CORE_API nxFractionQuarterTickPriceConverter : public nxFractionPriceConverter
{
public:
    nxFractionQuarterTickPriceConverter();
    std::string const& GetPriceAsString() override;

protected:
    bool _IsValidFractionLength(unsigned short length) override;
    bool _ParseFirstDigit(unsigned short& digit, unsigned short& accumulator, double& value) override;
};
