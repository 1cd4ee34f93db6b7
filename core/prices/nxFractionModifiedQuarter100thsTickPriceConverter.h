#pragma once

#include "core/prices/nxModifiedFractionPriceConverter.h"

/// Quarters of a hundredth behind a point, a '+' for two: 5.2525 is "5.252".
class NX_CORE_API nxFractionModifiedQuarter100thsTickPriceConverter : public nxModifiedFractionPriceConverter
{
public:
    nxFractionModifiedQuarter100thsTickPriceConverter();
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
