// Prices as texts: every tick of every format there and back, the texts that do not come back, and what is refused.
#include "core/prices/nxPriceConverter.h"

#include "core/prices/nxDecimalPriceConverter.h"
#include "core/prices/nxFraction32ndsTickPriceConverter.h"
#include "core/prices/nxFractionModifiedHalf32ndsTickPriceConverter.h"
#include "core/prices/nxPriceConverterHelper.h"
#include "core/prices/nxVariableTickTableContainer.h"
#include "tests/concurrency/RunTogether.h"
#include "tests/prices/nxAllocationCount.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <set>
#include <tuple>
#include <type_traits>
#include <typeinfo>

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

nxDecimal Tick(std::string const& text)
{
    return nxDecimal(text, '.');
}

/// Of a fixed tick, of a ladder of the catalogue or of neither.
nxPriceManipulator Manipulator(std::string const& rule)
{
    if (rule.starts_with("VTT_"))
        return nxPriceManipulator(nxVariableTickTableContainer::GetVariableTickTable(rule));
    return rule.empty() ? nxPriceManipulator() : nxPriceManipulator(Tick(rule));
}

std::string TextOf(nxPriceConverter& converter, double price)
{
    return converter.SetPrice(price, false) ? converter.GetPriceAsString() : "not set";
}

/// In place of the price of a text that is refused, which leaves a null.
constexpr double refused = 4503599627370495.0;

constexpr std::tuple<char const*, double, char const*> shown[] = {
#define NX_SHOWN(format, price, text) {format, price, text},
#define NX_TAKEN(format, tick, text, price)
#define NX_REFUSED(format, tick, text)
#include "tests/prices/nxPriceTexts.def"
};

constexpr std::tuple<char const*, char const*, std::string_view, double> given[] = {
#define NX_SHOWN(format, price, text)
#define NX_TAKEN(format, tick, text, price) {format, tick, text, price},
#define NX_REFUSED(format, tick, text) {format, tick, text, refused},
#include "tests/prices/nxPriceTexts.def"
};

constexpr std::tuple<char const*, char const*, char const*, double, char const*> places[] = {
#define NX_PLACES(format, tick, ladder, price, text) {format, tick, ladder, price, text},
#include "tests/prices/nxPriceTicks.def"
};

/// Text to price to text is the identity for a price on the tick.
void ExpectRoundTrip(nxPriceConverter& converter, double price)
{
    std::string const text = TextOf(converter, price);
    ASSERT_TRUE(converter.SetPriceFromString(text)) << price << " as \"" << text << '"';
    EXPECT_TRUE(converter.GetPrice() == price) << price << " as \"" << text << '"';
    EXPECT_EQ(converter.GetPriceAsString(), text);
}

constexpr std::pair<char const*, int> ticksOfAWhole[] = {
#define NX_FRACTION(format, ticks) {format, ticks},
#include "tests/prices/nxPriceTicks.def"
};

constexpr std::pair<char const*, char const*> hostTicks[] = {
#define NX_HOST_TICK(format, tick) {format, tick},
#include "tests/prices/nxPriceTicks.def"
};

struct Check
{
    char const* tick;
    char const* fixedTickOrLadder;
    double price;
    bool isSet;
};

constexpr Check checks[] = {
#define NX_CHECKED(tick, manipulator, price, isSet) {tick, manipulator, price, isSet},
#include "tests/prices/nxPriceTicks.def"
};
} // namespace

TEST(nxPriceConverterRoundTrip, HoldsForEveryTick)
{
    for (auto const& [format, ticks] : ticksOfAWhole)
    {
        SCOPED_TRACE(format);
        auto const converter = Converter(format);
        std::set<std::string> texts;
        for (int const whole : {-102, -1, 0, 101})
        {
            for (int tick = 0; tick < ticks; ++tick)
            {
                ExpectRoundTrip(*converter, whole + static_cast<double>(tick) / ticks);
                texts.insert(converter->GetPriceAsString());
            }
        }
        EXPECT_EQ(texts.size(), 4u * static_cast<unsigned int>(ticks));
        EXPECT_TRUE(converter->GetMinimumTickIncrement() == 1.0 / ticks);
        EXPECT_EQ(converter->GetMaxFractionDecimalPlaces(), ticks == 512 ? 9 : 8);
    }
    for (auto const& [format, tick] : hostTicks)
    {
        SCOPED_TRACE(std::string(format) + " by " + tick);
        auto const converter = Converter(format);
        ASSERT_TRUE(converter->SetMinimumTickIncrement(Tick(tick)));
        for (int count = -4100; count <= 4100; ++count)
            ExpectRoundTrip(*converter, count * Tick(tick).GetAsDouble());
    }
}

TEST(nxPriceConverterText, IsOfTheFormat)
{
    for (auto const& [format, price, text] : shown)
        EXPECT_EQ(TextOf(*Converter(format), price), text) << format << ' ' << price;
    // What is no price has a text all the same.
    double const infinity = std::numeric_limits<double>::infinity();
    for (double const price : {std::numeric_limits<double>::quiet_NaN(), infinity, -infinity, 1e300, -1e300})
    {
        EXPECT_EQ(TextOf(*Converter("32NDS"), price), "-9223372036854775808-00") << price;
        EXPECT_EQ(TextOf(*Converter("FULL"), price), "-9223372036854775808") << price;
    }
}

TEST(nxPriceConverterParse, TakesOrRefuses)
{
    for (auto const& [format, tick, text, price] : given)
    {
        auto const converter = Converter(format);
        (void)converter->SetMinimumTickIncrement(Tick(tick));
        (void)converter->SetPriceFromString("101-16+"); // is forgotten
        (void)converter->SetPrice(7.0, false);
        EXPECT_EQ(converter->SetPriceFromString(std::string(text)), price != refused)
            << format << ' ' << text;
        EXPECT_TRUE(converter->GetPrice() == price) << format << ' ' << text << ' ' << converter->GetPrice();
    }
    EXPECT_FALSE(Converter("32NDS")->SetPriceFromString(std::string(65536, '0')));
    EXPECT_TRUE(Converter("32NDS")->SetPriceFromString(std::string(65535, '0')));
    for (auto const& [format, ticks] : ticksOfAWhole)
    {
        auto const converter = Converter(format);
        (void)converter->SetPrice(7.0, false);
        EXPECT_FALSE(converter->SetPriceFromString(""));
        EXPECT_TRUE(converter->GetPrice() == 7.0) << "an empty text leaves the price";
        EXPECT_FALSE(converter->SetPriceFromString("x"));
        EXPECT_TRUE(converter->GetPrice().IsNull());
        EXPECT_EQ(converter->GetPriceAsString(), "");
    }
}

TEST(nxPriceConverterSetPrice, HoldsThePriceAgainstTickAndTable)
{
    for (auto const& [tick, manipulator, price, set] : checks)
    {
        nxDecimalPriceConverter converter;
        ASSERT_TRUE(converter.SetMinimumTickIncrement(Tick(tick)));
        EXPECT_FALSE(converter.SetPriceManipulator(Manipulator(manipulator))); // always, though it works
        EXPECT_EQ(converter.SetPrice(price, true), set) << price << " by " << tick;
        EXPECT_EQ(double(converter.GetPrice()), set ? price : refused) << price;
        EXPECT_TRUE(converter.SetPrice(price, false));
        EXPECT_EQ(double(converter.GetPrice()), price); // as given, not rounded
    }
    auto const twelfths = Converter("12THS");
    EXPECT_EQ(double(twelfths->GetMinimumTickIncrement()), 0.083333333);
    EXPECT_FALSE(twelfths->SetPrice(100 + 1.0 / 12, true));
    EXPECT_TRUE(twelfths->SetPriceFromString("100-01"));

    nxDecimalPriceConverter converter; // no change and a missing tick leave null
    EXPECT_TRUE(converter.SetPrice(7.0, false));
    EXPECT_FALSE(converter.SetPrice(nxDoubleValueWrapper::GetNoChangeInstance(), false));
    EXPECT_TRUE(converter.GetPrice().IsNull());
    EXPECT_TRUE(converter.SetPrice(7.0, false));
    EXPECT_FALSE(converter.SetPrice(7.0, true));
    EXPECT_TRUE(converter.GetPrice().IsNull());
}

TEST(nxPriceConverterTick, IsTheHostsForDecimalsAndWholeTicksAlone)
{
    for (auto const& [tick, taken] : {std::pair("0.00000001", true), {"0.000000009", false}, {"0", false}})
    {
        for (char const* const format : {"DECIMALS", "FULL", "8THS"})
        {
            bool const isFixed = *format == '8';
            auto const converter = Converter(format);
            EXPECT_EQ(converter->SetMinimumTickIncrement(Tick(tick)), taken || isFixed) << tick;
            EXPECT_EQ(converter->GetMinimumTickIncrement().IsNull(), !taken && !isFixed) << tick;
        }
    }
}

TEST(nxPriceConverterChange, StepsByTickOrAlongTheTable)
{
    nxDecimalPriceConverter converter;
    EXPECT_FALSE(converter.ChangePrice(Ticks(1)));
    (void)converter.SetPrice(100.0, false);
    EXPECT_FALSE(converter.ChangePrice(Ticks(1))); // no tick
    EXPECT_TRUE(converter.GetPrice() == 100.0);
    (void)converter.SetMinimumTickIncrement(Tick("0.25"));
    EXPECT_TRUE(converter.ChangePrice(Ticks(-4)));
    EXPECT_TRUE(converter.GetPrice() == 99.0);
    EXPECT_FALSE(converter.ChangePrice(Ticks()));
    EXPECT_FALSE(converter.ChangePrice(Ticks(2147483646)));
    EXPECT_TRUE(converter.GetPrice() == 99.0);

    (void)converter.SetPriceManipulator(Manipulator("VTT_CHIX_EUZ1"));
    (void)converter.SetPrice(9.998, false);
    EXPECT_TRUE(converter.ChangePrice(Ticks(3)));
    EXPECT_TRUE(converter.GetPrice() == 10.005);
}

TEST(nxPriceConverterDecimals, PlacesAreThoseOfTickTableAndRatio)
{
    for (auto const& [format, tick, ladder, price, text] : places)
    {
        auto const converter = Converter(format);
        EXPECT_EQ(converter->SetMinimumTickIncrement(Tick(tick)), *tick != '\0');
        EXPECT_FALSE(converter->SetMinimumTickIncrement(Tick("0"))); // a refused tick leaves the places
        (void)converter->SetPriceManipulator(Manipulator(ladder));
        EXPECT_EQ(TextOf(*converter, price), text) << format << " by " << tick << ladder;
    }
}

TEST(nxPriceConverterDecimals, ARatioIsAboveZero)
{
    class Shown : public nxDecimalPriceConverter
    {
    public:
        using nxDecimalPriceConverter::_SetPriceRatio;
    };
    Shown converter;
    EXPECT_TRUE(converter._SetPriceRatio(Tick("0.1")));
    for (char const* const ratio : {"0.00", "-0.01", "x"})
        EXPECT_FALSE(converter._SetPriceRatio(Tick(ratio))) << ratio;
    (void)converter.SetMinimumTickIncrement(Tick("1"));
    EXPECT_EQ(TextOf(converter, 985), "98.5"); // the old ratio and its places
}

TEST(nxPricesCost, NoMemoryForAShortTextAndAKnownLadder)
{
    if (!nxAllocationCount::IsPossible())
        GTEST_SKIP();
    nxFraction32ndsTickPriceConverter thirtySeconds;
    nxFractionModifiedHalf32ndsTickPriceConverter modified;
    nxDecimalPriceConverter decimals;
    (void)decimals.SetMinimumTickIncrement(Tick("0.01"));
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
class Bare : public nxFractionPriceConverter
{
public:
    using nxFractionPriceConverter::nxFractionPriceConverter;

    std::string const& GetPriceAsString() override
    {
        return _text;
    }

    bool lengthAllowed = false;
    int finished = 0;

protected:
    bool _IsValidFractionLength(unsigned short length) override
    {
        return lengthAllowed || nxFractionPriceConverter::_IsValidFractionLength(length);
    }
    void _FinishParse(unsigned short& accumulator, double& value) override
    {
        ++finished;
        nxFractionPriceConverter::_FinishParse(accumulator, value);
    }
};
} // namespace

TEST(nxPriceConverterBase, RefusesEveryDigitBehindTheSeparator)
{
    Bare bare(3, 0);
    EXPECT_EQ(double(bare.GetMinimumTickIncrement()), 0.333333333);
    EXPECT_TRUE(bare.SetPriceFromString("12"));
    EXPECT_FALSE(bare.SetPriceFromString("12-0"));
    bare.lengthAllowed = true;
    EXPECT_TRUE(bare.SetPriceFromString("12-")); // nothing behind it to refuse
    EXPECT_FALSE(bare.SetPriceFromString("12-0"));
    EXPECT_EQ(bare.finished, 2);
    Bare untied(0, 0);
    EXPECT_TRUE(untied.GetMinimumTickIncrement().IsNull());
    (void)untied.SetPrice(3.0, false);
    EXPECT_FALSE(untied.SetPriceFromString("12"));
    EXPECT_TRUE(untied.GetPrice() == 3.0);
}

TEST(nxPriceConverterHelperCreate, MakesTheClassOfTheFormat)
{
    std::set<std::string> classes;
    for (unsigned int number = 4501; Format(number).GetValue() == number; ++number) // all that there are
    {
        auto const converter = Converter(Format(number));
        ASSERT_NE(converter, nullptr) << number;
        nxPriceConverter const& made = *converter;
        classes.insert(typeid(made).name());
    }
    EXPECT_EQ(classes.size(), 26u); // three formats share the decimals
    for (unsigned int const number : {4501u, 4518u, 4519u})
        EXPECT_NE(dynamic_cast<nxDecimalPriceConverter*>(Converter(Format(number)).get()), nullptr);
    for (unsigned int const number : {0u, 2u, 4500u, 4529u})
        EXPECT_EQ(Converter(Format(number)), nullptr) << number;
}

TEST(nxPriceConverterHelperText, FailuresLeaveTheText)
{
    std::string text = "old";
    nxDecimal const tick(0.25, 2);
    EXPECT_FALSE(nxPriceConverterHelper::GetPriceAsString(0.5, nxPriceFormatEnum(), text, true));
    EXPECT_FALSE(nxPriceConverterHelper::GetPriceAsString(0.5, tick, nxPriceFormatEnum(), text, true, false));
    EXPECT_FALSE(nxPriceConverterHelper::GetPriceAsString(nxDoubleValueWrapper(), Format(4503), text, true));
    EXPECT_FALSE(nxPriceConverterHelper::GetPriceAsString(0.5, nxDecimal(), Format(4501), text, true, false));
    EXPECT_EQ(text, "old");
}

TEST(nxPriceConverterHelperText, SharedConvertersKeepTheirTick)
{
    std::string text;
    EXPECT_TRUE(nxPriceConverterHelper::GetPriceAsString(9850.0, Format(4518), text, true));
    EXPECT_EQ(text, "99"); // no tick yet, so no places
    EXPECT_FALSE(
        nxPriceConverterHelper::GetPriceAsString(9850.5, nxDecimal(1, 0), Format(4518), text, true, true));
    EXPECT_TRUE(nxPriceConverterHelper::GetPriceAsString(9850.0, Format(4518), text, true));
    EXPECT_EQ(text, "98.50"); // the refused price left its tick
    EXPECT_TRUE(nxPriceConverterHelper::GetPriceAsString(9850.0, Format(4519), text, true));
    EXPECT_EQ(text, "1"); // each format has its own
}

TEST(nxPriceConverterHelperText, TheLockServesThreads)
{
    RunTogether(2,
                [](int thread)
                {
                    for (int round = 0; round < 5000; ++round)
                    {
                        std::string text;
                        ASSERT_TRUE(nxPriceConverterHelper::GetPriceAsString(thread == 0 ? 101.5 : -0.5,
                                                                             Format(4510), text, true));
                        ASSERT_EQ(text, thread == 0 ? "101-16" : "-0-16");
                    }
                });
}
