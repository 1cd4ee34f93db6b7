#pragma once

#include "core/prices/nxFractionPriceConverter.h"

/// Tenths of a thirty-second: 101 and 16.5/32 is "101-165".
class NX_CORE_API nxFractionTenth32ndsTickPriceConverter : public nxFractionPriceConverter
{
public:
    nxFractionTenth32ndsTickPriceConverter();
    std::string const& GetPriceAsString() override;

protected:
    bool _IsValidFractionLength(unsigned short length) override;
    bool _ParseFirstDigit(unsigned short& digit, unsigned short& accumulator, double& value) override;
    bool _ParseSecondDigit(unsigned short& digit, unsigned short& accumulator, double& value) override;
    bool _ParseThirdDigit(unsigned short& digit, unsigned short& accumulator, double& value) override;
};
