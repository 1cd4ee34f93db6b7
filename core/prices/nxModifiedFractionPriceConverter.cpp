#include "core/prices/nxModifiedFractionPriceConverter.h"

#include "core/prices/nxFractionParser.h"
#include "core/prices/nxFractionText.h"

nxModifiedFractionPriceConverter::nxModifiedFractionPriceConverter(unsigned short const& first,
                                                                   unsigned short const& second,
                                                                   char separator)
    : nxPriceConverter(first, second), _separator(separator)
{
    _DeriveMinimumTick(7);
}

bool nxModifiedFractionPriceConverter::SetMinimumTickIncrement(nxDecimal const& /*tick*/)
{
    return true;
}

bool nxModifiedFractionPriceConverter::SetPriceFromString(std::string const& text)
{
    return nxFractionParser(*this).SetPrice(text);
}

bool nxModifiedFractionPriceConverter::_IsValidFractionLength(unsigned short /*length*/)
{
    return false;
}

bool nxModifiedFractionPriceConverter::_ParseFirstDigit(unsigned short& /*digit*/,
                                                        unsigned short& /*accumulator*/, double& /*value*/)
{
    return false;
}

bool nxModifiedFractionPriceConverter::_ParseSecondDigit(unsigned short& /*digit*/,
                                                         unsigned short& /*accumulator*/, double& /*value*/)
{
    return false;
}

bool nxModifiedFractionPriceConverter::_ParseThirdDigit(unsigned short& /*digit*/,
                                                        unsigned short& /*accumulator*/, double& /*value*/)
{
    return false;
}

void nxModifiedFractionPriceConverter::_ResetParse()
{
}

void nxModifiedFractionPriceConverter::_FinishParse(unsigned short& /*accumulator*/, double& /*value*/)
{
}

bool nxModifiedFractionPriceConverter::_ParseCharacter(char const* character, unsigned short& position,
                                                       unsigned short& digit, bool& negative, bool& separator)
{
    if (*character == '-' && position == 0)
    {
        negative = true;
        return true;
    }
    if (*character == _separator)
    {
        separator = true;
        return true;
    }
    switch (*character)
    {
    case '+': digit = 5; return true;
    case ' ': digit = 0; return true;
    default: return nxFractionDigits::ReadDigit(*character, digit);
    }
}
