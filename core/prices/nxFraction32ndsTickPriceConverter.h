#pragma once

#include "core/prices/nxFractionPriceConverter.h"

/// Thirty-seconds: 101.5 is "101-16".
class NX_CORE_API nxFraction32ndsTickPriceConverter : public nxFractionPriceConverter
{
public:
    nxFraction32ndsTickPriceConverter();
    std::string const& GetPriceAsString() override;

protected:
    bool _IsValidFractionLength(unsigned short length) override;
    bool _ParseFirstDigit(unsigned short& digit, unsigned short& accumulator, double& value) override;
    bool _ParseSecondDigit(unsigned short& digit, unsigned short& accumulator, double& value) override;
};
