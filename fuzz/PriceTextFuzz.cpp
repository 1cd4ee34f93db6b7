// Every price format: what a converter takes comes back, what it refuses leaves none, steps undo each other.

#include "fuzz/FuzzInput.h"

#include "core/prices/nxPriceConverter.h"
#include "core/prices/nxPriceConverterHelper.h"
#include "core/prices/nxVariableTickTable.h"

namespace
{
constexpr unsigned int firstFormat = NX_PRICE_FORMAT_DECIMALS;
constexpr unsigned int formatCount =
    NX_PRICE_FORMAT_FRACTION_MODIFIED_EIGHTH_32NDS_TICK_ALT - firstFormat + 1;

/// A ladder of the input's own, sound or not.
class Ladder : public nxVariableTickTable
{
public:
    explicit Ladder(FuzzInput& input)
    {
        for (unsigned int ranges = input.Below(3); ranges != 0; --ranges)
            _AddRange(FuzzDecimal<nxDecimal, short>(input), FuzzDecimal<nxDecimal, short>(input));
        _AddTopRange(FuzzDecimal<nxDecimal, short>(input));
    }
};

/// No number is the same as itself here.
bool IsSame(nxDoubleValueWrapper const& a, nxDoubleValueWrapper const& b)
{
    return double(a) == double(b) || (std::isnan(double(a)) && std::isnan(double(b)));
}

/// Beyond, the double that carries a price is coarser than some ticks.
bool IsWithinReason(nxDoubleValueWrapper const& price)
{
    return std::fabs(double(price)) < 1e6;
}

/// Within the tolerance of a converter, which for a large tick is a part of that.
bool IsNear(nxPriceConverter const& converter, nxDoubleValueWrapper const& price)
{
    double const tick = std::max(1.0, double(converter.GetMinimumTickIncrement()));
    return std::fabs(double(converter.GetPrice()) - double(price)) <= nxDoubleValueWrapper::tolerance * tick;
}

/// @param isOnGrid  whether the converter's tick allows what the text shows
void CheckText(nxPriceConverter& converter, std::string const& text, bool isOnGrid)
{
    nxDoubleValueWrapper const before = converter.GetPrice();
    bool const taken = converter.SetPriceFromString(text);
    nxDoubleValueWrapper const price = converter.GetPrice();
    FUZZ_CHECK(taken || price.IsNull() || IsSame(price, before));
    std::string const shown = converter.GetPriceAsString();
    FUZZ_CHECK(shown.size() < 400);
    if (!taken || !isOnGrid || !price.IsValid() || !IsWithinReason(price))
        return;
    FUZZ_CHECK(converter.SetPriceFromString(shown) && IsNear(converter, price));
    FUZZ_EQUAL(converter.GetPriceAsString(), shown);
}

void CheckSteps(nxPriceConverter& converter, int ticks, bool hasLadder)
{
    using Ticks = nxValueWrapper<int, 2147483647, 2147483646>;
    nxDoubleValueWrapper const before = converter.GetPrice();
    if (hasLadder)
        ticks %= 100; // a ladder is climbed one by one
    if (!converter.ChangePrice(Ticks(ticks)))
        FUZZ_CHECK(IsSame(converter.GetPrice(), before));
    else if (!hasLadder && IsWithinReason(before) && ticks >= -1000 && ticks <= 1000)
        FUZZ_CHECK(converter.ChangePrice(Ticks(-ticks)) &&
                   std::fabs(double(converter.GetPrice()) - double(before)) < 1e-6);
}

/// The helper's text, from converters that it shares, is that of a converter of the caller's own.
void CheckHelper(nxPriceFormatEnum const& format, double price, nxDecimal const& tick, bool validate)
{
    std::unique_ptr<nxPriceConverter> const own(nxPriceConverterHelper::CreatePriceConverter(format));
    std::string text = "as it was";
    bool const shown = nxPriceConverterHelper::GetPriceAsString(price, tick, format, text, true, validate);
    FUZZ_EQUAL(shown, own->SetMinimumTickIncrement(tick) && own->SetPrice(price, validate));
    FUZZ_EQUAL(text, shown ? own->GetPriceAsString() : "as it was");
}
} // namespace

void FuzzOne(FuzzInput& input)
{
    nxPriceFormatEnum const format(static_cast<nxEnumValue>(firstFormat + input.Below(formatCount)));
    auto const tickValue = input.Take<short>();
    auto const tickPlaces = static_cast<unsigned char>(input.Below(12));
    nxDecimal const tick = nxDecimal::ConstructFromValueAndDecimalPlaces(tickValue, tickPlaces);
    bool const hasLadder = input.Truth();
    std::string const text = input.Text();
    auto const number = input.Take<double>();
    auto const ticks = input.Take<int>();
    bool const validate = input.Truth();

    std::unique_ptr<nxPriceConverter> const converter(nxPriceConverterHelper::CreatePriceConverter(format));
    (void)converter->SetMinimumTickIncrement(tick);
    Ladder const ladder(input);
    if (hasLadder)
        (void)converter->SetPriceManipulator(nxPriceManipulator(&ladder));

    // A tick of eight places and more is beside the tolerance by which prices are checked.
    CheckText(*converter, text, tickPlaces < 7 && tickValue > 0 && !hasLadder);
    CheckSteps(*converter, ticks, hasLadder);
    if (converter->SetPrice(number, validate))
        FUZZ_CHECK(converter->GetPriceAsString().size() < 400);
    CheckSteps(*converter, ticks, hasLadder);
    CheckHelper(format, number, tick, validate);
}
