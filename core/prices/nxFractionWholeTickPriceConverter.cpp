#include "core/prices/nxFractionWholeTickPriceConverter.h"

#include "core/numbers/nxArithmetic.h"
#include "core/prices/nxFractionText.h"

#include <cstddef>

nxFractionWholeTickPriceConverter::nxFractionWholeTickPriceConverter() : nxFractionPriceConverter(0, 0)
{
}

bool nxFractionWholeTickPriceConverter::SetMinimumTickIncrement(nxDecimal const& tick)
{
    // Past the fraction formats, which ignore the tick.
    return nxPriceConverter::SetMinimumTickIncrement(tick);
}

bool nxFractionWholeTickPriceConverter::SetPriceFromString(std::string const& text)
{
    if (text.empty())
        return false;
    bool const negative = text.front() == '-';
    std::size_t const firstDigit = negative ? 1 : 0;
    bool isNumber = text.size() > firstDigit;
    double value = 0.0;
    for (std::size_t position = firstDigit; isNumber && position < text.size(); ++position)
    {
        unsigned short digit = 0;
        isNumber = nxFractionDigits::ReadDigit(text[position], digit);
        value = value * 10.0 + digit;
    }
    if (!isNumber)
    {
        _price.SetNull();
        return false;
    }
    return SetPrice(negative ? -value : value, true);
}

std::string const& nxFractionWholeTickPriceConverter::GetPriceAsString()
{
    _text.clear();
    if (_price.IsValid())
        nxFractionText::AppendNumber(_text, nxArithmetic::ToInt64(_price));
    return _text;
}
