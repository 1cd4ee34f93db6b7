#include "PriceRule.h"

#include "core/prices/nxPriceConverterHelper.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

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
    while (places > 0 && !FitsDigits(price, places))
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

std::string TooManyDigits(std::string const& text)
{
    return '"' + text + "\" has more than the " + std::to_string(mostDigits) +
           " digits of a price, decimal places included";
}

/// Whether a price can be rounded to a tick, and moved by so many of them to either side, within `mostDigits`.
bool IsHeld(nxDecimal const& price, nxDecimal const& tick, int ticks = 0)
{
    double const reach = std::fabs(price.GetAsDouble()) + std::abs(ticks) * tick.GetAsDouble();
    return FitsDigits(reach, tick.GetDecimalPlaces());
}

std::optional<nxDecimal> ReadDecimal(std::string const& text, std::string& reason)
{
    nxDecimal const value(text, '.');
    if (!value.IsValid())
        reason = '"' + text + "\" is no number";
    else if (HasTooManyDigits(text))
        reason = TooManyDigits(text);
    else
        return value;
    return std::nullopt;
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
    if (HasTooManyDigits(text) || !_reader->SetPriceFromString(text))
        return std::nullopt;
    nxDecimal const price = DecimalOf(_reader->GetPrice());
    return Holds(price) ? std::optional(price) : std::nullopt;
}

std::string PriceRule::Show(nxDecimal const& price) const
{
    (void)_converter->SetPrice(price.GetAsDouble(), false);
    return _converter->GetPriceAsString();
}

bool PriceRule::Holds(nxDecimal const& price, int ticks) const
{
    return IsHeld(price, TickAt(price), ticks);
}

std::string PriceRule::GetFault(std::string const& text) const
{
    std::optional<nxDecimal> const price = Read(text);
    if (price && IsOnTick(*price))
        return "";
    if (price)
        return text + " is off its tick of " + TickAt(*price).GetAsString() + ", between " +
               Show(Stepped(*price, -1)) + " and " + Show(Stepped(*price, 1));
    if (_reader->SetPriceFromString(text))
        return TooManyDigits(text);
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

bool FitsDigits(double value, unsigned char decimalPlaces)
{
    return std::fabs(value) < std::pow(10.0, mostDigits - decimalPlaces);
}

bool HasTooManyDigits(std::string const& text)
{
    std::size_t const start = text.find_first_of("123456789");
    if (start == std::string::npos)
        return false;
    auto const isDigit = [](char character) { return character >= '0' && character <= '9'; };
    return std::count_if(text.begin() + static_cast<std::ptrdiff_t>(start), text.end(), isDigit) > mostDigits;
}

std::optional<nxDecimal> ReadPrice(std::string const& text, nxVariableTickTable const& ladder,
                                   std::string& reason)
{
    std::optional<nxDecimal> const price = ReadDecimal(text, reason);
    if (!price || IsHeld(*price, ladder.GetTickIncrement(*price)))
        return price;
    reason = TooManyDigits(text);
    return std::nullopt;
}

std::optional<nxDecimal> ReadTick(std::string const& text, std::string& reason)
{
    std::optional<nxDecimal> const tick = ReadDecimal(text, reason);
    if (!tick)
        return std::nullopt;
    if (tick->IsZero())
        reason = "a tick of zero moves no price";
    else if (tick->IsNegative())
        reason = "a tick is above zero, and " + text + " is not";
    else if (*tick < FinestTick())
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
