#pragma once

#include "core/prices/nxFractionPriceConverter.h"

/// Eighths of a thirty-second with a 5 for the half: 101 and 16.5/32 is "101-165", and no digit is 4.
class NX_CORE_API nxFractionModifiedEighth32ndsTickPriceConverter : public nxFractionPriceConverter
{
public:
    nxFractionModifiedEighth32ndsTickPriceConverter();
    std::string const& GetPriceAsString() override;

protected:
    bool _IsValidFractionLength(unsigned short length) override;
    bool _ParseFirstDigit(unsigned short& digit, unsigned short& accumulator, double& value) override;
    bool _ParseSecondDigit(unsigned short& digit, unsigned short& accumulator, double& value) override;
    bool _ParseThirdDigit(unsigned short& digit, unsigned short& accumulator, double& value) override;
};
