#pragma once

#include "core/prices/nxFractionPriceConverter.h"

/// Quarters of a tenth: 101.325 is "101-32".
class NX_CORE_API nxFraction40thsTickPriceConverter : public nxFractionPriceConverter
{
public:
    nxFraction40thsTickPriceConverter();
    std::string const& GetPriceAsString() override;

protected:
    bool _IsValidFractionLength(unsigned short length) override;
    bool _ParseFirstDigit(unsigned short& digit, unsigned short& accumulator, double& value) override;
    bool _ParseSecondDigit(unsigned short& digit, unsigned short& accumulator, double& value) override;
};
