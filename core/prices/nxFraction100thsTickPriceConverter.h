#pragma once

#include "core/prices/nxFractionPriceConverter.h"

/// Hundredths: 101.05 is "101-05".
class NX_CORE_API nxFraction100thsTickPriceConverter : public nxFractionPriceConverter
{
public:
    nxFraction100thsTickPriceConverter();
    std::string const& GetPriceAsString() override;

protected:
    bool _IsValidFractionLength(unsigned short length) override;
    bool _ParseFirstDigit(unsigned short& digit, unsigned short& accumulator, double& value) override;
    bool _ParseSecondDigit(unsigned short& digit, unsigned short& accumulator, double& value) override;
};
