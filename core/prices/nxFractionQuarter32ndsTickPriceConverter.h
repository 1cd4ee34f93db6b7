#pragma once

#include "core/prices/nxFractionPriceConverter.h"

/// Quarters of a thirty-second: 101 and 16.25/32 is "101-162".
class NX_CORE_API nxFractionQuarter32ndsTickPriceConverter : public nxFractionPriceConverter
{
public:
    nxFractionQuarter32ndsTickPriceConverter();
    std::string const& GetPriceAsString() override;

protected:
    bool _IsValidFractionLength(unsigned short length) override;
    bool _ParseFirstDigit(unsigned short& digit, unsigned short& accumulator, double& value) override;
    bool _ParseSecondDigit(unsigned short& digit, unsigned short& accumulator, double& value) override;
    bool _ParseThirdDigit(unsigned short& digit, unsigned short& accumulator, double& value) override;
};
