#include "core/prices/nxFractionPriceConverter.h"

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
    _ResetParse();
    if (text.empty() || !_minimumTick.IsValid())
    {
        return false;
    }
    auto const readCharacter = [this](char const* character, unsigned short position, unsigned short& digit,
                                      bool& negative, bool& separator)
    { return _ParseCharacter(character, position, digit, negative, separator); };
    auto const allowsLength = [this](unsigned short length) { return _IsValidFractionLength(length); };
    auto const takeDigit =
        [this](int distance, unsigned short digit, unsigned short& accumulator, double& value)
    {
        switch (distance)
        {
        case 1: return _ParseFirstDigit(digit, accumulator, value);
        case 2: return _ParseSecondDigit(digit, accumulator, value);
        case 3: return _ParseThirdDigit(digit, accumulator, value);
        case 4: return _ParseFourthDigit(digit, accumulator, value);
        default: return false;
        }
    };
    nxFractionDigits::Reading reading;
    if (!nxFractionDigits::Read(text, reading, readCharacter, allowsLength, takeDigit))
    {
        _price.SetNull();
        return false;
    }
    _FinishParse(reading.accumulator, reading.value);
    _price = reading.negative ? -reading.value : reading.value;
    return true;
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

bool nxFractionPriceConverter::_AddTicks(unsigned short ticks, double& value) const
{
    value += ticks * double(_minimumTick);
    return true;
}
