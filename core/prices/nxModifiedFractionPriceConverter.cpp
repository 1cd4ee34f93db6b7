#include "core/prices/nxModifiedFractionPriceConverter.h"

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
    _ResetParse();
    if (text.empty() || !_minimumTick.IsValid())
    {
        return false;
    }
    auto const readCharacter = [this](char const* character, unsigned short position, unsigned short& digit,
                                      bool& negative, bool& separator)
    { return _ReadCharacter(*character, position == 0, digit, negative, separator); };
    auto const allowsLength = [this](unsigned short length) { return _IsValidFractionLength(length); };
    auto const takeDigit =
        [this](int distance, unsigned short digit, unsigned short& accumulator, double& value)
    {
        switch (distance)
        {
        case 1: return _ParseFirstDigit(digit, accumulator, value);
        case 2: return _ParseSecondDigit(digit, accumulator, value);
        case 3: return _ParseThirdDigit(digit, accumulator, value);
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

bool nxModifiedFractionPriceConverter::_AddTicks(unsigned short ticks, double& value) const
{
    value += ticks * double(_minimumTick);
    return true;
}

bool nxModifiedFractionPriceConverter::_ReadCharacter(char character, bool isFirst, unsigned short& digit,
                                                      bool& negative, bool& separator) const
{
    if (character == '-' && isFirst)
    {
        negative = true;
        return true;
    }
    if (character == _separator)
    {
        separator = true;
        return true;
    }
    switch (character)
    {
    case '+': digit = 5; return true;
    case ' ': digit = 0; return true;
    default: return nxFractionDigits::ReadDigit(character, digit);
    }
}
