#pragma once

#include "core/prices/nxModifiedFractionPriceConverter.h"

/// Quarters of a thirty-second, a '+' for two: 101 and 16.75/32 is "101-166".
class NX_CORE_API nxFractionModifiedQuarter32ndsTickPriceConverter : public nxModifiedFractionPriceConverter
{
public:
    nxFractionModifiedQuarter32ndsTickPriceConverter();
    std::string const& GetPriceAsString() override;

protected:
    bool _IsValidFractionLength(unsigned short length) override;
    bool _ParseFirstDigit(unsigned short& digit, unsigned short& accumulator, double& value) override;
    bool _ParseSecondDigit(unsigned short& digit, unsigned short& accumulator, double& value) override;
    bool _ParseThirdDigit(unsigned short& digit, unsigned short& accumulator, double& value) override;
    void _ResetParse() override;
    void _FinishParse(unsigned short& accumulator, double& value) override;

private:
    bool _thirdPositionSeen = false;
};
