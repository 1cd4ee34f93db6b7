#pragma once

#include "core/prices/nxFractionPriceConverter.h"

/// Halves, written as tenths: 101.5 is "101-5".
class NX_CORE_API nxFractionHalfTickPriceConverter : public nxFractionPriceConverter
{
public:
    nxFractionHalfTickPriceConverter();
    std::string const& GetPriceAsString() override;

protected:
    bool _IsValidFractionLength(unsigned short length) override;
    bool _ParseFirstDigit(unsigned short& digit, unsigned short& accumulator, double& value) override;
};
