#pragma once

#include "core/prices/nxFractionPriceConverter.h"

/// Twelfths: 100 and 1/12 is "100-01". The text "1-12" is taken for 2.0.
class NX_CORE_API nxFraction12thsTickPriceConverter : public nxFractionPriceConverter
{
public:
    nxFraction12thsTickPriceConverter();
    std::string const& GetPriceAsString() override;

protected:
    bool _IsValidFractionLength(unsigned short length) override;
    bool _ParseFirstDigit(unsigned short& digit, unsigned short& accumulator, double& value) override;
    bool _ParseSecondDigit(unsigned short& digit, unsigned short& accumulator, double& value) override;
};
