#include "PriceRule.h"

#include "core/prices/nxPriceConverterHelper.h"

#include <cmath>

namespace nxTool
{
namespace
{
/// The smallest tick that a converter takes: every text is on it.
nxDecimal FinestTick()
{
    return nxDecimal::ConstructFromValueAndDecimalPlaces(1, 8);
}

/// A double at as many places as its size leaves room for, nine at most, which the finest fraction needs.
nxDecimal DecimalOf(double price)
{
    unsigned char places = 9;
    while (places > 0 && std::fabs(price) * std::pow(10.0, places) > 9e18)
        --places;
    nxDecimal value(price, places);
    value.SetDecimalPlaces(0, true);
    return value;
}

nxDecimal DefaultTick(nxPriceFormatEnum const& format)
{
    return format == NX_PRICE_FORMAT_DECIMALS ? nxDecimal(0.01, 2) : nxDecimal(1, 0);
}

std::unique_ptr<nxPriceConverter> NewConverter(nxPriceFormatEnum const& format)
{
    return std::unique_ptr<nxPriceConverter>(nxPriceConverterHelper::CreatePriceConverter(format));
}

/// A converter that takes every text of its format.
std::unique_ptr<nxPriceConverter> NewReader(nxPriceFormatEnum const& format)
{
    auto reader = NewConverter(format);
    (void)reader->SetMinimumTickIncrement(FinestTick());
    (void)reader->SetPriceManipulator(nxPriceManipulator(FinestTick()));
    return reader;
}
} // namespace

PriceRule::PriceRule(nxPriceFormatEnum const& format)
    : _format(format), _converter(NewConverter(format)), _reader(NewReader(format)),
      _isTickOfFormat(!NeedsTick(format))
{
    nxDecimal const tick =
        _isTickOfFormat ? DecimalOf(_converter->GetMinimumTickIncrement()) : DefaultTick(format);
    _SetTick(nxPriceManipulator(tick), tick);
}

PriceRule::PriceRule(nxPriceFormatEnum const& format, nxDecimal const& tick)
    : _format(format), _converter(NewConverter(format)), _reader(NewReader(format))
{
    _SetTick(nxPriceManipulator(tick), tick);
}

PriceRule::PriceRule(nxPriceFormatEnum const& format, nxVariableTickTable const& ladder)
    : _format(format), _converter(NewConverter(format)), _reader(NewReader(format)), _ladder(&ladder)
{
    _SetTick(nxPriceManipulator(&ladder), ladder.GetMinimumTickIncrement());
}

void PriceRule::_SetTick(nxPriceManipulator const& manipulator, nxDecimal const& smallestTick)
{
    _manipulator = manipulator;
    (void)_converter->SetPriceManipulator(manipulator);
    (void)_converter->SetMinimumTickIncrement(smallestTick);
}

bool PriceRule::NeedsTick(nxPriceFormatEnum const& format)
{
    switch (format.GetEnumValue())
    {
    case NX_PRICE_FORMAT_DECIMALS:
    case NX_PRICE_FORMAT_FRACTION_FULL_TICK:
    case NX_PRICE_FORMAT_MODIFIED_DECIMALS_100THS:
    case NX_PRICE_FORMAT_MODIFIED_DECIMALS_10000THS: return true;
    default: return false;
    }
}

std::optional<nxDecimal> PriceRule::Read(std::string const& text) const
{
    if (!_reader->SetPriceFromString(text))
        return std::nullopt;
    return DecimalOf(_reader->GetPrice());
}

std::string PriceRule::Show(nxDecimal const& price) const
{
    (void)_converter->SetPrice(price.GetAsDouble(), false);
    return _converter->GetPriceAsString();
}

std::string PriceRule::GetFault(std::string const& text) const
{
    std::optional<nxDecimal> const price = Read(text);
    if (price && IsOnTick(*price))
        return "";
    if (price)
        return text + " is off its tick of " + TickAt(*price).GetAsString() + ", between " +
               Show(Stepped(*price, -1)) + " and " + Show(Stepped(*price, 1));
    if (NeedsTick(_format))
        return '"' + text + "\" is no " +
               (_format == NX_PRICE_FORMAT_FRACTION_FULL_TICK ? "whole number" : "number");
    nxDecimal const sample = Stepped(nxDecimal(112, 0), 5);
    return '"' + text + "\" is no price in " + _format.GetLongDescription() + ", which look like " +
           Show(sample);
}

bool PriceRule::IsOnTick(nxDecimal const& price) const
{
    return _isTickOfFormat || Rounded(price, NX_ROUNDING_METHOD_NEAREST) == price;
}

nxDecimal PriceRule::Stepped(nxDecimal const& price, int ticks) const
{
    nxDecimal stepped = price;
    if (!IsOnTick(price))
    {
        stepped = Rounded(price, NX_ROUNDING_METHOD_NEAREST);
        if (ticks > 0 && stepped > price)
            --ticks;
        else if (ticks < 0 && stepped < price)
            ++ticks;
    }
    _manipulator.Increment(stepped, ticks);
    return stepped;
}

nxDecimal PriceRule::Rounded(nxDecimal const& price, nxEnumValue method) const
{
    nxDecimal rounded = price;
    _manipulator.RoundToValidPrice(nxRoundingMethodEnum(method), rounded);
    return rounded;
}

nxDecimal PriceRule::TickAt(nxDecimal const& price) const
{
    return _ladder == nullptr ? _manipulator.GetMinimumTickIncrement() : _ladder->GetTickIncrement(price);
}

std::optional<nxDecimal> ReadTick(std::string const& text, std::string& reason)
{
    nxDecimal const tick(text, '.');
    if (!tick.IsValid())
        reason = '"' + text + "\" is no number";
    else if (tick.IsZero())
        reason = "a tick of zero moves no price";
    else if (tick.IsNegative())
        reason = "a tick is above zero, and " + text + " is not";
    else if (tick < FinestTick())
        reason = text + " is smaller than the smallest tick, " + FinestTick().GetAsString();
    else
        return tick;
    return std::nullopt;
}

std::string Trimmed(nxDecimal price)
{
    price.SetDecimalPlaces(0, true);
    return price.GetAsString();
}
} // namespace nxTool
