#pragma once

#include "core/prices/nxFractionPriceConverter.h"

/// Eighths of a thirty-second with a '+' for the half and a blank for none: 101 and 16.5/32 is "101-16+".
class NX_CORE_API nxFractionModifiedEighth32ndsAltTickPriceConverter : public nxFractionPriceConverter
{
public:
    nxFractionModifiedEighth32ndsAltTickPriceConverter();
    std::string const& GetPriceAsString() override;

protected:
    bool _IsValidFractionLength(unsigned short length) override;
    bool _ParseFirstDigit(unsigned short& digit, unsigned short& accumulator, double& value) override;
    bool _ParseSecondDigit(unsigned short& digit, unsigned short& accumulator, double& value) override;
    bool _ParseThirdDigit(unsigned short& digit, unsigned short& accumulator, double& value) override;
    void _ResetParse() override;
    void _FinishParse(unsigned short& accumulator, double& value) override;
    /// A '+' reads as 4 and a blank as 0.
    bool _ParseCharacter(char const* character, unsigned short& position, unsigned short& digit,
                         bool& negative, bool& separator) override;

private:
    bool _thirdPositionSeen = false;
};
