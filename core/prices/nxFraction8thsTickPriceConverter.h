#pragma once

#include "core/prices/nxFractionPriceConverter.h"

/// Eighths: 101.625 is "101-5".
class NX_CORE_API nxFraction8thsTickPriceConverter : public nxFractionPriceConverter
{
public:
    nxFraction8thsTickPriceConverter();
    std::string const& GetPriceAsString() override;

protected:
    bool _IsValidFractionLength(unsigned short length) override;
    bool _ParseFirstDigit(unsigned short& digit, unsigned short& accumulator, double& value) override;
};
