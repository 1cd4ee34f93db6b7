#include "core/prices/nxPriceConverter.h"

#include "core/numbers/nxArithmetic.h"
#include "core/prices/nxFractionText.h"
#include "core/vocabulary/nxRoundingMethodEnum.h"

#include <algorithm>
#include <cmath>

namespace
{
// By the tolerance of the double wrapper, 1e-8, which every check of this file goes by.
bool IsNear(double value, double whole)
{
    return nxDoubleValueWrapper(value) == whole;
}
} // namespace

nxPriceConverter::nxPriceConverter(unsigned short const& firstDenominator,
                                   unsigned short const& secondDenominator)
    : _firstDenominator(firstDenominator), _secondDenominator(secondDenominator)
{
}

nxPriceConverter::~nxPriceConverter() = default;

bool nxPriceConverter::SetPrice(nxDoubleValueWrapper const& price, bool const& validate)
{
    if (!price.IsValid() || (validate && !_IsOnTick(price)))
    {
        _price.SetNull();
        return false;
    }
    _price = price;
    return true;
}

bool nxPriceConverter::ChangePrice(nxValueWrapper<int, 2147483647, 2147483646> const& ticks)
{
    if (!ticks.IsValid() || !_price.IsValid() || !_minimumTick.IsValid())
        return false;
    if (_priceManipulator.IsVariableTick())
    {
        nxDecimal price(double(_price), _priceManipulator.GetMinimumTickIncrement().GetDecimalPlaces());
        _priceManipulator.Increment(price, ticks.GetValue());
        _price = price.GetAsDouble();
        return true;
    }
    _price = ticks.GetValue() * double(_minimumTick) + double(_price);
    return true;
}

nxDoubleValueWrapper nxPriceConverter::GetPrice() const
{
    return _price;
}

nxDoubleValueWrapper nxPriceConverter::GetMinimumTickIncrement() const
{
    return _minimumTick;
}

bool nxPriceConverter::SetMinimumTickIncrement(nxDecimal const& tick)
{
    if (!tick.IsValid() || IsNear(tick.GetAsDouble(), 0.0))
    {
        _minimumTick.SetNull();
        return false;
    }
    _minimumTick = tick.GetAsDouble();
    return true;
}

bool nxPriceConverter::SetPriceManipulator(nxPriceManipulator const& manipulator)
{
    _priceManipulator = manipulator;
    return false; // Hosts have learnt not to read this result.
}

unsigned char nxPriceConverter::GetMaxFractionDecimalPlaces() const
{
    return 8;
}

bool nxPriceConverter::_SetPriceRatio(nxDecimal const& ratio)
{
    if (!ratio.IsValid() || ratio.IsZero() || ratio.IsNegative())
        return false;
    _priceRatio = ratio.GetAsDouble();
    return true;
}

bool nxPriceConverter::_BeginFractionText(char separator, _Fraction& fraction)
{
    _text.clear();
    if (!_price.IsValid())
        return false;
    bool const hasFraction = _AppendWholePart();
    _text += separator;
    fraction = hasFraction ? _SplitFraction() : _Fraction();
    return true;
}

void nxPriceConverter::_DeriveMinimumTick(unsigned char decimalPlaces)
{
    unsigned short const denominator = std::max(_firstDenominator, _secondDenominator);
    if (denominator == 0)
        return;
    double const tick = nxDecimal(1.0 / denominator, decimalPlaces).GetAsDouble();
    if (!IsNear(tick, 0.0))
        _minimumTick = tick;
}

bool nxPriceConverter::_IsOnTick(nxDoubleValueWrapper const& price) const
{
    if (!_minimumTick.IsValid())
        return false;
    if (!_priceManipulator.IsVariableTick())
    {
        double const ticks = double(price) / double(_minimumTick);
        double const rest = ticks - std::trunc(ticks);
        if (IsNear(rest, 0.0) || IsNear(rest, 1.0) || IsNear(rest, -1.0))
            return true;
    }
    // The manipulator's tick may be another than the minimum tick. One that is unset rounds nothing, so that every
    // whole number is then taken for a price on the tick.
    nxDecimal rounded(double(price), _priceManipulator.GetMinimumTickIncrement().GetDecimalPlaces());
    rounded.Round(_priceManipulator, nxRoundingMethodEnum(NX_ROUNDING_METHOD_NEAREST));
    return price == rounded.GetAsDouble();
}

// Returns whether a fraction follows. A price just beside a whole number has none.
bool nxPriceConverter::_AppendWholePart()
{
    double const price = double(_price);
    long long whole = nxArithmetic::ToInt64(price);
    double const rest = price - static_cast<double>(whole);
    bool hasFraction = false;
    if (IsNear(rest, 1.0))
        ++whole;
    else if (IsNear(rest, -1.0))
        --whole;
    else
        hasFraction = !IsNear(rest, 0.0);
    if (whole == 0 && std::signbit(price) && !IsNear(price, 0.0))
        _text += '-';
    nxFractionText::AppendNumber(_text, whole);
    return hasFraction;
}

nxPriceConverter::_Fraction nxPriceConverter::_SplitFraction() const
{
    double const magnitude = std::fabs(double(_price));
    double const parts = (magnitude - std::trunc(magnitude)) / (1.0 / _firstDenominator);
    auto const first = nxFractionText::TruncateToShort(parts);
    double const rest = parts - first;
    if (_secondDenominator == 0)
        return {nxFractionText::RoundUpAboveHalf(first, rest)};
    if (IsNear(rest, 0.0))
        return {first};
    if (IsNear(rest, 1.0))
        return {static_cast<unsigned short>(first + 1)};
    double const subparts = rest / (1.0 / (_secondDenominator / _firstDenominator));
    auto const second = nxFractionText::TruncateToShort(subparts);
    return {first, nxFractionText::RoundUpAboveHalf(second, subparts - second)};
}
