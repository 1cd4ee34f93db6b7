#pragma once

#include "core/prices/nxFractionPriceConverter.h"

/// Sixteenths: 101.5 is "101-08".
class NX_CORE_API nxFraction16thsTickPriceConverter : public nxFractionPriceConverter
{
public:
    nxFraction16thsTickPriceConverter();
    std::string const& GetPriceAsString() override;

protected:
    bool _IsValidFractionLength(unsigned short length) override;
    bool _ParseFirstDigit(unsigned short& digit, unsigned short& accumulator, double& value) override;
    bool _ParseSecondDigit(unsigned short& digit, unsigned short& accumulator, double& value) override;
};
