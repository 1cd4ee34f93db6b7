// Prices as texts: every tick of every format there and back, the texts that do not come back, and what is
// refused.
#include "core/prices/nxPriceConverter.h"

#include "core/prices/nxDecimalPriceConverter.h"
#include "core/prices/nxFraction32ndsTickPriceConverter.h"
#include "core/prices/nxFractionModifiedHalf32ndsTickPriceConverter.h"
#include "core/prices/nxPriceConverterHelper.h"
#include "tests/concurrency/ForkDuringFirstUse.h"
#include "tests/concurrency/RunTogether.h"
#include "tests/prices/nxAllocationCount.h"
#include "tests/prices/nxPriceRule.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <set>

static_assert(std::is_abstract_v<nxPriceConverter> && std::has_virtual_destructor_v<nxPriceConverter>);

namespace
{
using namespace std::string_view_literals;
using Ticks = nxValueWrapper<int, 2147483647, 2147483646>;

nxPriceFormatEnum Format(unsigned int number)
{
    return nxPriceFormatEnum(static_cast<nxEnumValue>(number));
}

std::unique_ptr<nxPriceConverter> Converter(nxPriceFormatEnum const& format)
{
    return std::unique_ptr<nxPriceConverter>(nxPriceConverterHelper::CreatePriceConverter(format));
}

/// By what tells a format's token from the others: "32NDS" or "DECIMALS".
std::unique_ptr<nxPriceConverter> Converter(std::string const& word)
{
    nxPriceFormatEnum format;
    for (std::string const& end : {"FRACTION_" + word + "_TICK", "FRACTION_" + word, word})
        if (format.SetFromString("NX_PRICE_FORMAT_" + end))
            break;
    EXPECT_FALSE(format.IsUndefined()) << word;
    return Converter(format);
}

std::string TextOf(nxPriceConverter& converter, double price)
{
    return converter.SetPrice(price, false) ? converter.GetPriceAsString() : "not set";
}

/// What comes of a text after 7: that, nothing, which is null, or a price.
nxDoubleValueWrapper Parse(nxPriceConverter& converter, std::string_view text)
{
    EXPECT_NE(TextOf(converter, 7.0), "");
    bool const isTaken = converter.SetPriceFromString(std::string(text));
    EXPECT_EQ(isTaken, !converter.GetPrice().IsNull() && !text.empty()) << text;
    EXPECT_EQ(converter.GetPriceAsString().empty(), converter.GetPrice().IsNull()) << text;
    return converter.GetPrice();
}

/// Text to price to text is the identity for a price on the tick.
std::string RoundTrip(nxPriceConverter& converter, double price)
{
    std::string const text = TextOf(converter, price);
    EXPECT_TRUE(Parse(converter, text) == price) << text;
    EXPECT_EQ(converter.GetPriceAsString(), text);
    return text;
}

/// Of all strings of up to four digits.
int CountTakenFractions(nxPriceConverter& converter, std::string const& whole)
{
    int count = 0;
    for (int width = 0, end = 1; width <= 4; ++width, end *= 10)
        for (int number = 0; number < end; ++number)
            count += converter.SetPriceFromString(whole + std::to_string(end + number).substr(1));
    return count;
}

void CheckFraction(char const* format, int ticks, int taken, std::string const& last, char const* beyond)
{
    SCOPED_TRACE(format);
    auto const converter = Converter(format);
    EXPECT_TRUE(converter->SetMinimumTickIncrement(Number("0.3"))); // and keeps its own
    std::set<std::string> texts;
    for (int const whole : {-102, -1, 0, 101})
        for (int tick = 0; tick < ticks; ++tick)
            texts.insert(RoundTrip(*converter, whole + static_cast<double>(tick) / ticks));
    EXPECT_EQ(texts.size(), 4u * static_cast<unsigned int>(ticks));
    EXPECT_EQ(TextOf(*converter, 102 - 1.0 / ticks), last);
    EXPECT_EQ(TextOf(*converter, 102 - 0.1 / ticks), beyond);
    EXPECT_EQ(CountTakenFractions(*converter, last.substr(0, 4)), taken);
    EXPECT_TRUE(converter->GetMinimumTickIncrement() == 1.0 / ticks);
    EXPECT_EQ(converter->GetMaxFractionDecimalPlaces(), ticks == 512 ? 9 : 8);
}

void CheckHostTick(char const* format, char const* tick)
{
    SCOPED_TRACE(std::string(format) + " by " + tick);
    auto const converter = Converter(format);
    EXPECT_TRUE(converter->SetMinimumTickIncrement(Number("0.00000001")));
    EXPECT_FALSE(converter->SetMinimumTickIncrement(Number("0.000000009")));
    EXPECT_TRUE(converter->GetMinimumTickIncrement().IsNull());
    ASSERT_TRUE(converter->SetMinimumTickIncrement(Number(tick)));
    for (int count = -4100; count <= 4100; ++count)
        (void)RoundTrip(*converter, count * Number(tick).GetAsDouble());
}

void CheckText(char const* format, char const* tick, std::string_view text, double price)
{
    auto const converter = Converter(format);
    (void)converter->SetMinimumTickIncrement(Number(tick));
    (void)converter->SetPriceFromString("101-16+"); // is forgotten
    EXPECT_TRUE(Parse(*converter, text) == price) << format << ' ' << text;
}

void CheckPlaces(char const* format, std::string const& tick, char const* ladder, double price,
                 char const* text)
{
    auto const converter = Converter(format);
    EXPECT_EQ(converter->SetMinimumTickIncrement(Number(tick)), !tick.empty());
    EXPECT_FALSE(converter->SetMinimumTickIncrement(Number("0"))); // a refused tick leaves the places
    (void)converter->SetPriceManipulator(Manipulator(ladder));
    EXPECT_EQ(TextOf(*converter, price), text) << format << " by " << tick << ladder;
}

/// A price is held against tick and table, and kept as given.
void CheckSetPrice(char const* tick, char const* manipulator, double price, bool isSet)
{
    nxDecimalPriceConverter converter;
    ASSERT_TRUE(converter.SetMinimumTickIncrement(Number(tick)));
    EXPECT_FALSE(converter.SetPriceManipulator(Manipulator(manipulator))); // always, though it works
    EXPECT_EQ(converter.SetPrice(price, true), isSet) << price << " by " << tick;
    EXPECT_EQ(double(converter.GetPrice()), isSet ? price : null) << price;
    EXPECT_TRUE(converter.SetPrice(price, false) && converter.GetPrice() == price) << price;
}
} // namespace

TEST(nxPriceConverter, HoldsToTheTables)
{
#define NX_FRACTION(...) CheckFraction(__VA_ARGS__);
#define NX_HOST_TICK(...) CheckHostTick(__VA_ARGS__);
#define NX_PLACES(...) CheckPlaces(__VA_ARGS__);
#define NX_CHECKED(...) CheckSetPrice(__VA_ARGS__);
#define NX_SHOWN(format, price, text) EXPECT_EQ(TextOf(*Converter(format), price), text) << (format);
#define NX_TAKEN(...) CheckText(__VA_ARGS__);
#define NX_REFUSED(format, tick, text) CheckText(format, tick, text, null);
#include "tests/prices/nxPriceTexts.def"
#include "tests/prices/nxPriceTicks.def"
}

TEST(nxPriceConverter, StepsByTickOrAlongTheTable)
{
    nxDecimalPriceConverter converter; // no change and a missing tick leave null
    (void)converter.SetPrice(7.0, false);
    EXPECT_FALSE(converter.SetPrice(nxDoubleValueWrapper::GetNoChangeInstance(), false));
    EXPECT_TRUE(converter.GetPrice().IsNull() && converter.SetPrice(7.0, false));
    EXPECT_TRUE(!converter.SetPrice(7.0, true) && converter.GetPrice().IsNull());
    EXPECT_FALSE(converter.ChangePrice(Ticks(1)));
    (void)converter.SetPrice(100.0, false);
    EXPECT_FALSE(converter.ChangePrice(Ticks(1))); // no tick
    EXPECT_TRUE(converter.GetPrice() == 100.0);
    (void)converter.SetMinimumTickIncrement(Number("0.25"));
    EXPECT_TRUE(converter.ChangePrice(Ticks(-4)) && converter.GetPrice() == 99.0);
    EXPECT_FALSE(converter.ChangePrice(Ticks()) || converter.ChangePrice(Ticks(2147483646)));
    EXPECT_TRUE(converter.GetPrice() == 99.0);
    (void)converter.SetPriceManipulator(Manipulator("VTT_CHIX_EUZ1"));
    (void)converter.SetPrice(9.998, false);
    EXPECT_TRUE(converter.ChangePrice(Ticks(3)) && converter.GetPrice() == 10.005);
    auto const twelfths = Converter("12THS"); // whose texts are taken all the same
    EXPECT_FALSE(twelfths->SetPrice(100 + 1.0 / 12, true));
}

TEST(nxPriceConverter, TakesNoMemoryForAShortTextAndAKnownLadder)
{
    if (!nxAllocationCount::IsPossible())
        GTEST_SKIP();
    nxFraction32ndsTickPriceConverter thirtySeconds;
    nxFractionModifiedHalf32ndsTickPriceConverter modified;
    nxDecimalPriceConverter decimals;
    (void)decimals.SetMinimumTickIncrement(Number("0.01"));
    std::string const texts[] = {"101-16", "101-16+", "25.37"};
    std::string const identifier = "VTT_CXE_mifid_5";
    nxDecimal price("19.995", '.');
    nxAllocationCount const count;
    EXPECT_TRUE(thirtySeconds.SetPriceFromString(texts[0]) && thirtySeconds.ChangePrice(Ticks(1)));
    EXPECT_TRUE(modified.SetPriceFromString(texts[1]) && decimals.SetPriceFromString(texts[2]));
    EXPECT_TRUE(thirtySeconds.GetPriceAsString() == "101-17" && modified.GetPriceAsString() == texts[1]);
    EXPECT_EQ(decimals.GetPriceAsString(), texts[2]);
    nxVariableTickTable const* const table = nxVariableTickTableContainer::GetVariableTickTable(identifier);
    table->Increment(price);
    table->Increment(price, -400);
    EXPECT_EQ(count.Get(), 0u);
}

namespace
{
// A host's own class on the fraction base, which takes no digit of its own accord.
struct Bare : nxFractionPriceConverter
{
    using nxFractionPriceConverter::nxFractionPriceConverter;

    std::string const& GetPriceAsString() override
    {
        return _text;
    }
    bool _IsValidFractionLength(unsigned short length) override
    {
        return lengthAllowed || nxFractionPriceConverter::_IsValidFractionLength(length);
    }
    bool lengthAllowed = false;
};
} // namespace

TEST(nxPriceConverterBase, RefusesEveryDigitBehindTheSeparatorAndRatiosOfNothing)
{
    Bare bare(3, 0);
    EXPECT_EQ(double(bare.GetMinimumTickIncrement()), 0.333333333);
    EXPECT_TRUE(bare.SetPriceFromString("12") && !bare.SetPriceFromString("12-"));
    bare.lengthAllowed = true;
    EXPECT_TRUE(bare.SetPriceFromString("12-") && !bare.SetPriceFromString("12-0"));
    Bare untied(0, 0);
    EXPECT_TRUE(untied.GetMinimumTickIncrement().IsNull());
    (void)untied.SetPrice(3.0, false);
    EXPECT_TRUE(!untied.SetPriceFromString("12") && untied.GetPrice() == 3.0);

    struct : nxDecimalPriceConverter
    {
        using nxDecimalPriceConverter::_SetPriceRatio;
    } converter;
    EXPECT_TRUE(converter._SetPriceRatio(Number("0.1")));
    for (char const* const ratio : {"0.00", "-0.01", "x"})
        EXPECT_FALSE(converter._SetPriceRatio(Number(ratio))) << ratio;
    (void)converter.SetMinimumTickIncrement(Number("1"));
    EXPECT_EQ(TextOf(converter, 985), "98.5"); // the old ratio and its places
}

TEST(nxPriceConverterHelper, MakesEveryFormatAndLeavesTheTextWhereItFails)
{
    for (unsigned int number = 4501; Format(number).GetValue() == number; ++number) // all that there are
        EXPECT_NE(Converter(Format(number)), nullptr) << number;
    EXPECT_TRUE(Converter(Format(0)) == nullptr && Converter(Format(2)) == nullptr);
    using Helper = nxPriceConverterHelper;
    auto const show = [](double price, unsigned int format, char const* tick = nullptr, bool validate = false)
    {
        std::string text = "old";
        bool const isShown = tick == nullptr ? Helper::GetPriceAsString(price, Format(format), text, true)
                                             : Helper::GetPriceAsString(price, Number(tick), Format(format),
                                                                        text, true, validate);
        EXPECT_EQ(isShown, text != "old");
        return text;
    };
    EXPECT_EQ(show(0.5, 0) + show(0.5, 0, "0.25"), "oldold");
    EXPECT_EQ(show(null, 4503) + show(0.5, 4501, "0"), "oldold");
    EXPECT_EQ(show(9850.0, 4518), "99"); // no tick yet, so no places
    EXPECT_EQ(show(9850.5, 4518, "1", true) + show(101.5, 4510, "1", true), "old101-16");
    EXPECT_EQ(show(9850.0, 4518), "98.50"); // the refused price left its tick
    EXPECT_EQ(show(9850.0, 4519), "1");     // each format has its own
    RunTogether(2,
                [&show](int thread)
                {
                    for (int round = 0; round < 100000; ++round)
                        ASSERT_EQ(show(thread == 0 ? 101.5 : -0.5, 4510), thread == 0 ? "101-16" : "-0-16");
                });
}

TEST(nxPriceConverterHelper, CanBeAskedInAChildThatWasForkedDuringTheFirstQuestion)
{
    // For no format: without the lock, the parent's thread and the child may not share a converter.
    auto const ask = []
    {
        std::string text;
        (void)nxPriceConverterHelper::GetPriceAsString(0.5, Format(0), text, false);
    };
    EXPECT_EQ(CountForksThatMeetTheFirstUse(30, ask), 0);
}
