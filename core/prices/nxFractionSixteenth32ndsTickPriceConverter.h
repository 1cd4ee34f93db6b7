#pragma once

#include "core/prices/nxFractionPriceConverter.h"

/// Sixteenths of a thirty-second: 101 and 16.5/32 is "101-1608".
class NX_CORE_API nxFractionSixteenth32ndsTickPriceConverter : public nxFractionPriceConverter
{
public:
    nxFractionSixteenth32ndsTickPriceConverter();
    std::string const& GetPriceAsString() override;
    /// 9: a 512th has nine places.
    unsigned char GetMaxFractionDecimalPlaces() const override;

protected:
    bool _IsValidFractionLength(unsigned short length) override;
    bool _ParseFirstDigit(unsigned short& digit, unsigned short& accumulator, double& value) override;
    bool _ParseSecondDigit(unsigned short& digit, unsigned short& accumulator, double& value) override;
    bool _ParseThirdDigit(unsigned short& digit, unsigned short& accumulator, double& value) override;
    bool _ParseFourthDigit(unsigned short& digit, unsigned short& accumulator, double& value) override;
};
