#include "core/prices/nxFractionPriceConverter.h"

#include "core/prices/nxFractionParser.h"
#include "core/prices/nxFractionText.h"

nxFractionPriceConverter::nxFractionPriceConverter(unsigned short const& first, unsigned short const& second)
    : nxPriceConverter(first, second)
{
    _DeriveMinimumTick(9);
}

bool nxFractionPriceConverter::SetMinimumTickIncrement(nxDecimal const& /*tick*/)
{
    return true;
}

bool nxFractionPriceConverter::SetPriceFromString(std::string const& text)
{
    return nxFractionParser(*this).SetPrice(text);
}

bool nxFractionPriceConverter::_IsValidFractionLength(unsigned short /*length*/)
{
    return false;
}

bool nxFractionPriceConverter::_ParseFirstDigit(unsigned short& /*digit*/, unsigned short& /*accumulator*/,
                                                double& /*value*/)
{
    return false;
}

bool nxFractionPriceConverter::_ParseSecondDigit(unsigned short& /*digit*/, unsigned short& /*accumulator*/,
                                                 double& /*value*/)
{
    return false;
}

bool nxFractionPriceConverter::_ParseThirdDigit(unsigned short& /*digit*/, unsigned short& /*accumulator*/,
                                                double& /*value*/)
{
    return false;
}

bool nxFractionPriceConverter::_ParseFourthDigit(unsigned short& /*digit*/, unsigned short& /*accumulator*/,
                                                 double& /*value*/)
{
    return false;
}

void nxFractionPriceConverter::_ResetParse()
{
}

void nxFractionPriceConverter::_FinishParse(unsigned short& /*accumulator*/, double& /*value*/)
{
}

bool nxFractionPriceConverter::_ParseCharacter(char const* character, unsigned short& position,
                                               unsigned short& digit, bool& negative, bool& separator)
{
    if (*character == '-')
    {
        (position == 0 ? negative : separator) = true;
        return true;
    }
    return nxFractionDigits::ReadDigit(*character, digit);
}
