#pragma once

#include "core/prices/nxFractionPriceConverter.h"

/// Tenths: 101.3 is "101-3".
class NX_CORE_API nxFraction10thsTickPriceConverter : public nxFractionPriceConverter
{
public:
    nxFraction10thsTickPriceConverter();
    std::string const& GetPriceAsString() override;

protected:
    bool _IsValidFractionLength(unsigned short length) override;
    bool _ParseFirstDigit(unsigned short& digit, unsigned short& accumulator, double& value) override;
};
