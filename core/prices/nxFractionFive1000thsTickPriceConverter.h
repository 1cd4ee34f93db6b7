#pragma once

#include "core/prices/nxFractionPriceConverter.h"

/// Five thousandths: 101.005 is "101-005".
class NX_CORE_API nxFractionFive1000thsTickPriceConverter : public nxFractionPriceConverter
{
public:
    nxFractionFive1000thsTickPriceConverter();
    std::string const& GetPriceAsString() override;

protected:
    bool _IsValidFractionLength(unsigned short length) override;
    bool _ParseFirstDigit(unsigned short& digit, unsigned short& accumulator, double& value) override;
    bool _ParseSecondDigit(unsigned short& digit, unsigned short& accumulator, double& value) override;
    bool _ParseThirdDigit(unsigned short& digit, unsigned short& accumulator, double& value) override;
};
