#pragma once

#include "core/prices/nxModifiedFractionPriceConverter.h"

/// Halves of a thirty-second, a '+' for the half: 101 and 16.5/32 is "101-16+".
class NX_CORE_API nxFractionModifiedHalf32ndsTickPriceConverter : public nxModifiedFractionPriceConverter
{
public:
    nxFractionModifiedHalf32ndsTickPriceConverter();
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
