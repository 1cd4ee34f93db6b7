#include "core/prices/nxDecimalPriceConverter.h"

#include "core/text/nxStringHelper.h"

namespace
{
constexpr char separator = '.';

// The places at which a price is looked up in a table, finer tables among them.
constexpr unsigned char lookupPlaces = 4;
} // namespace

nxDecimalPriceConverter::nxDecimalPriceConverter()
    : nxPriceConverter(0, 0), _displayPlaces(0), _ratioPlaces(0)
{
}

bool nxDecimalPriceConverter::SetMinimumTickIncrement(nxDecimal const& tick)
{
    if (!nxPriceConverter::SetMinimumTickIncrement(tick))
        return false;
    _displayPlaces = _AddRatioPlaces(tick.GetDecimalPlaces());
    return true;
}

bool nxDecimalPriceConverter::SetPriceFromString(std::string const& text)
{
    if (text.empty())
        return false;
    double value = 0.0;
    if (!nxStringHelper::SetFromString(text, value, separator).IsOK())
    {
        _price.SetNull();
        return false;
    }
    return SetPrice(_priceRatio.IsValid() ? value / double(_priceRatio) : value, true);
}

std::string const& nxDecimalPriceConverter::GetPriceAsString()
{
    if (!_price.IsValid())
    {
        _text.clear();
        return _text;
    }
    double const shown = _priceRatio.IsValid() ? double(_price) * double(_priceRatio) : double(_price);
    nxDecimal(shown, _GetDecimalPlaces()).GetAsString(_text, separator);
    return _text;
}

bool nxDecimalPriceConverter::_SetPriceRatio(nxDecimal const& ratio)
{
    if (!nxPriceConverter::_SetPriceRatio(ratio))
        return false;
    _ratioPlaces = ratio.GetDecimalPlaces();
    return true;
}

unsigned char nxDecimalPriceConverter::_GetDecimalPlaces() const
{
    return _priceManipulator.IsVariableTick() ? _AddRatioPlaces(_priceManipulator.NumberOfDecimalPlaces(
                                                    nxDecimal(double(_price), lookupPlaces)))
                                              : _displayPlaces;
}

unsigned char nxDecimalPriceConverter::_AddRatioPlaces(unsigned char places) const
{
    return static_cast<unsigned char>(places + (_priceRatio.IsValid() ? _ratioPlaces : 0));
}
