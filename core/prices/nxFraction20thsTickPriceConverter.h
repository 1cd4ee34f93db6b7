#pragma once

#include "core/prices/nxFractionPriceConverter.h"

/// Twentieths, written as hundredths: 101.15 is "101-15".
class NX_CORE_API nxFraction20thsTickPriceConverter : public nxFractionPriceConverter
{
public:
    nxFraction20thsTickPriceConverter();
    std::string const& GetPriceAsString() override;

protected:
    bool _IsValidFractionLength(unsigned short length) override;
    bool _ParseFirstDigit(unsigned short& digit, unsigned short& accumulator, double& value) override;
    bool _ParseSecondDigit(unsigned short& digit, unsigned short& accumulator, double& value) override;
};
