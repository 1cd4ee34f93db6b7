// Prices as texts: every tick of every format there and back, the texts that do not come back, and what is refused.
#include "core/prices/nxPriceConverter.h"

#include "core/prices/nxDecimalPriceConverter.h"
#include "core/prices/nxFraction32ndsTickPriceConverter.h"
#include "core/prices/nxFractionModifiedHalf32ndsTickPriceConverter.h"
#include "core/prices/nxPriceConverterHelper.h"
#include "core/prices/nxVariableTickTableContainer.h"
#include "tests/prices/nxAllocationCount.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <limits>
#include <memory>
#include <random>
#include <set>
#include <tuple>
#include <type_traits>

static_assert(std::is_abstract_v<nxPriceConverter> && std::has_virtual_destructor_v<nxPriceConverter>);

namespace
{
using namespace std::string_view_literals;
using Ticks = nxValueWrapper<int, 2147483647, 2147483646>;

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

nxPriceManipulator Ladder(std::string const& identifier)
{
    return nxPriceManipulator(nxVariableTickTableContainer::GetVariableTickTable(identifier));
}

std::string TextOf(nxPriceConverter& converter, double price)
{
    return converter.SetPrice(price, false) ? converter.GetPriceAsString() : "not set";
}

void ExpectTexts(char const* format, std::initializer_list<std::pair<double, char const*>> texts)
{
    for (auto const& [price, text] : texts)
        EXPECT_EQ(TextOf(*Converter(format), price), text) << format << ' ' << price;
}

/// A text that is taken gives its price, one that is refused a null.
constexpr double refused = 4503599627370495.0;

void ExpectParses(char const* format, std::initializer_list<std::pair<std::string_view, double>> texts,
                  char const* tick = "x")
{
    for (auto const& [text, price] : texts)
    {
        auto const converter = Converter(format);
        (void)converter->SetMinimumTickIncrement(Tick(tick));
        (void)converter->SetPrice(7.0, false);
        EXPECT_EQ(converter->SetPriceFromString(std::string(text)), price != refused)
            << format << ' ' << text;
        EXPECT_TRUE(converter->GetPrice() == price) << format << ' ' << text << ' ' << converter->GetPrice();
    }
}

/// Text to price to text is the identity for a price on the tick.
void ExpectRoundTrip(nxPriceConverter& converter, double price)
{
    std::string const text = TextOf(converter, price);
    ASSERT_TRUE(converter.SetPriceFromString(text)) << price << " as \"" << text << '"';
    EXPECT_TRUE(converter.GetPrice() == price) << price << " as \"" << text << '"';
    EXPECT_EQ(converter.GetPriceAsString(), text);
}

constexpr std::pair<char const*, int> ticksOfAWhole[] = {{"HALF", 2},
                                                         {"QUARTER", 4},
                                                         {"MODIFIED_QUARTER", 4},
                                                         {"8THS", 8},
                                                         {"10THS", 10},
                                                         {"12THS", 12},
                                                         {"16THS", 16},
                                                         {"20THS", 20},
                                                         {"32NDS", 32},
                                                         {"40THS", 40},
                                                         {"64THS", 64},
                                                         {"100THS", 100},
                                                         {"FIVE_1000THS", 200},
                                                         {"HALF_32NDS", 64},
                                                         {"QUARTER_32NDS", 128},
                                                         {"EIGHTH_32NDS", 256},
                                                         {"MODIFIED_EIGHTH_32NDS", 256},
                                                         {"MODIFIED_EIGHTH_32NDS_TICK_ALT", 256},
                                                         {"SIXTEENTH_32NDS", 512},
                                                         {"TENTH_32NDS", 320},
                                                         {"HALF_64THS", 128},
                                                         {"MODIFIED_HALF_32NDS", 64},
                                                         {"MODIFIED_QUARTER_32NDS", 128},
                                                         {"MODIFIED_QUARTER_100THS", 400}};

template <typename Work>
void ForEachFormat(Work work)
{
    for (unsigned int number = NX_PRICE_FORMAT_DECIMALS;
         number <= NX_PRICE_FORMAT_FRACTION_MODIFIED_EIGHTH_32NDS_TICK_ALT; ++number)
    {
        SCOPED_TRACE(number);
        work(*Converter(nxPriceFormatEnum(static_cast<nxEnumValue>(number))));
    }
}
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
    for (auto const& [format, tick] : {std::pair("DECIMALS", "0.25"),
                                       {"DECIMALS", "0.01"},
                                       {"DECIMALS", "0.0005"},
                                       {"DECIMALS", "1"},
                                       {"MODIFIED_DECIMALS_100THS", "1"},
                                       {"MODIFIED_DECIMALS_100THS", "0.25"},
                                       {"MODIFIED_DECIMALS_10000THS", "0.5"},
                                       {"FULL", "1"},
                                       {"FULL", "5"}})
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
    ExpectTexts("HALF", {{101.5, "101-5"}, {-0.5, "-0-5"}});
    ExpectTexts("QUARTER", {{712.25, "712-2"}});
    ExpectTexts("MODIFIED_QUARTER", {{712.75, "712-7"}});
    ExpectTexts("8THS", {{101.625, "101-5"}});
    ExpectTexts("10THS", {{101.3, "101-3"}});
    ExpectTexts("12THS", {{100 + 1.0 / 12, "100-01"}});
    ExpectTexts("16THS", {{101.5, "101-08"}});
    ExpectTexts("20THS", {{101.15, "101-15"}});
    ExpectTexts("32NDS", {{101.5, "101-16"}});
    ExpectTexts("40THS", {{101.325, "101-32"}});
    ExpectTexts("64THS", {{101.5, "101-32"}});
    ExpectTexts("100THS", {{101.05, "101-05"}});
    ExpectTexts("FIVE_1000THS", {{101.005, "101-005"}});
    ExpectTexts("HALF_32NDS", {{101.515625, "101-165"}, {101, "101-000"}});
    ExpectTexts("QUARTER_32NDS", {{101 + 16.25 / 32, "101-162"}, {101 + 16.75 / 32, "101-167"}});
    ExpectTexts("EIGHTH_32NDS", {{101 + 16.5 / 32, "101-164"}});
    ExpectTexts("MODIFIED_EIGHTH_32NDS", {{101 + 16.5 / 32, "101-165"}, {101 + 16.875 / 32, "101-168"}});
    ExpectTexts("MODIFIED_EIGHTH_32NDS_TICK_ALT", {{101 + 16.5 / 32, "101-16+"}, {101.5, "101-16 "}});
    ExpectTexts("SIXTEENTH_32NDS", {{101 + 16.5 / 32, "101-1608"}});
    ExpectTexts("TENTH_32NDS", {{101 + 16.5 / 32, "101-165"}});
    ExpectTexts("HALF_64THS", {{101 + 16.5 / 64, "101-165"}});
    ExpectTexts("MODIFIED_HALF_32NDS", {{101 + 16.5 / 32, "101-16+"}, {101.5, "101-16 "}});
    ExpectTexts("MODIFIED_QUARTER_32NDS", {{101 + 16.75 / 32, "101-166"}});
    ExpectTexts("MODIFIED_QUARTER_100THS", {{5.2525, "5.252"}, {5.25, "5.25 "}});
    ExpectTexts("FULL", {{99.9999999999, "99"}, {-0.5, "0"}});
}

TEST(nxPriceConverterText, NeverCarriesIntoTheNextPart)
{
    ExpectTexts("32NDS", {{100.999, "100-32"}, {100.015625, "100-00"}}); // half a part is not rounded up
    ExpectTexts("10THS", {{1.99, "1-10"}});
    ExpectTexts("20THS", {{1.99, "1-100"}});
    ExpectTexts("FIVE_1000THS", {{1.999, "1-1000"}});
    ExpectTexts("QUARTER", {{712.99, "712-6"}}); // the last entry
    ExpectTexts("MODIFIED_QUARTER", {{712.99, "712-7"}});
    ExpectTexts("HALF", {{1.99, "1-5"}});
    ExpectTexts("EIGHTH_32NDS", {{101 + 16.99 / 32, "101-16"}}); // no digit for an eighth eighth
    ExpectTexts("MODIFIED_EIGHTH_32NDS", {{101 + 16.99 / 32, "101-16"}});
    ExpectTexts("MODIFIED_EIGHTH_32NDS_TICK_ALT", {{101 + 16.99 / 32, "101-16"}});
    ExpectTexts("HALF_64THS", {{101 + 16.99 / 64, "101-16"}});
    ExpectTexts("HALF_32NDS", {{101 + 16.99 / 32, "101-165"}});
    ExpectTexts("TENTH_32NDS", {{101 + 16.99 / 32, "101-169"}});
    ExpectTexts("SIXTEENTH_32NDS", {{101 + 16.99 / 32, "101-1616"}});
    ExpectTexts("MODIFIED_QUARTER_32NDS", {{101 + 16.99 / 32, "101-166"}});
    // Far from zero the rest of a hundredth is no longer within 1e-8 of one.
    ExpectTexts("MODIFIED_QUARTER_100THS", {{12345678.01, "12345678.006"}});
}

TEST(nxPriceConverterText, TakesAPriceBesideAWholeNumberForWhole)
{
    ExpectTexts("32NDS", {{99.999999999, "100-00"},
                          {-99.999999999, "-100-00"},
                          {100.000000001, "100-00"},
                          {-0.999999999, "-1-00"},
                          {-0.000000001, "0-00"},
                          {-0.001, "-0-00"}, // the sign of a price that shows as zero
                          {3000000000.5, "3000000000-16"}});
    ExpectTexts("HALF_32NDS", {{100 + 15.999999999 / 32, "100-160"}});
    // What is no price has a text all the same.
    double const infinity = std::numeric_limits<double>::infinity();
    for (double const price : {std::numeric_limits<double>::quiet_NaN(), infinity, -infinity, 1e300, -1e300})
    {
        ExpectTexts("32NDS", {{price, "-9223372036854775808-00"}});
        ExpectTexts("FULL", {{price, "-9223372036854775808"}});
    }
}

TEST(nxPriceConverterParse, TakesOneTextForEachDigit)
{
    ExpectParses("HALF", {{"101-4", refused}});
    ExpectParses("QUARTER", {{"712-4", 712.5}, {"712-3", refused}});
    ExpectParses("MODIFIED_QUARTER", {{"712-6", refused}});
    ExpectParses("8THS", {{"1-8", refused}});
    ExpectParses("12THS",
                 {{"1-09", 1.75}, {"1-12", 2.0}, {"1-13", refused}, {"1-20", refused}}); // 12 is let in
    ExpectParses("16THS", {{"1-15", 1.9375}, {"1-16", refused}, {"1-09", 1.5625}});
    ExpectParses("20THS", {{"1-95", 1.95}, {"1-93", refused}});
    ExpectParses("32NDS", {{"1-31", 1.96875}, {"1-32", refused}, {"1-29", 1.90625}, {"1-40", refused}});
    ExpectParses("40THS", {{"1-97", 1.975}, {"1-96", refused}});
    ExpectParses("64THS", {{"1-63", 1.984375}, {"1-64", refused}, {"1-70", refused}});
    ExpectParses("HALF_32NDS", {{"112-163", refused}, {"112-320", refused}});
    ExpectParses("QUARTER_32NDS", {{"1-016", refused}});
    ExpectParses("EIGHTH_32NDS", {{"1-317", 1 + 255.0 / 256}, {"1-008", refused}});
    ExpectParses("MODIFIED_EIGHTH_32NDS", {{"101-165", 101 + 16.5 / 32},
                                           {"101-164", refused},
                                           {"1-320", 2.0}, // let in
                                           {"1-390", 1 + 39.0 / 32}});
    ExpectParses("MODIFIED_EIGHTH_32NDS_TICK_ALT",
                 {{"101-16", 101.5}, {"101-164", 101 + 16.5 / 32}, {"101-320", refused}});
    ExpectParses("SIXTEENTH_32NDS", {{"0-0019", 19.0 / 512}, {"0-0020", refused}}); // any last digit
    ExpectParses("TENTH_32NDS", {{"0-319", 319.0 / 320}, {"0-320", refused}});
    ExpectParses("HALF_64THS", {{"0-635", 127.0 / 128}, {"0-640", refused}});
    ExpectParses("FIVE_1000THS", {{"0-995", 0.995}, {"0-994", refused}});
    ExpectParses("MODIFIED_HALF_32NDS", {{"101-16", 101.5}, {"101-161", refused}, {"101-1", refused}});
    ExpectParses("MODIFIED_QUARTER_32NDS", {{"101-165", 101 + 16.5 / 32}, {"101-167", refused}});
    ExpectParses("MODIFIED_QUARTER_100THS", {{"5.250", 5.25},
                                             {"5.25", 7.5}, // ten times the fraction
                                             {"0.01", 0.1},
                                             {"5", 5.0},
                                             {".25 ", 0.25},
                                             {"-.25+", -0.255},
                                             {"5-250", refused}});
}

TEST(nxPriceConverterParse, ReadsSignsAndSeparatorsWhereTheyStand)
{
    ExpectParses("32NDS", {{"101", 101.0},
                           {"-1-16", -1.5},
                           {"--16", -0.5},
                           {"-16", -16.0},
                           {"-", 0.0},
                           {"1-1", refused},
                           {"1-161", refused},
                           {"1-", refused},
                           {"1-0-", refused},
                           {"1-16-16", refused},
                           {"1.16", refused},
                           {"+1-16", refused},
                           {"1-16\0"sv, refused},
                           {"1\0"sv, refused},
                           {" 1-16", refused}}); // by its length
    // '+' is 5 and ' ' is 0, in front of the separator too.
    ExpectParses("MODIFIED_HALF_32NDS", {{"1+ -16+", 150.515625}, {"+", 5.0}, {"1--16", refused}});
    ExpectParses("MODIFIED_QUARTER_100THS", {{"1..16", refused}});
    ExpectParses("MODIFIED_EIGHTH_32NDS_TICK_ALT", {{"+", 4.0}, {"1 - 8+", 10.265625}});
    ExpectParses("FULL", {{"5", refused}}); // no tick yet
    ExpectParses("DECIMALS", {{"5", refused}});
    EXPECT_FALSE(Converter("32NDS")->SetPriceFromString(std::string(65536, '0')));
    EXPECT_TRUE(Converter("32NDS")->SetPriceFromString(std::string(65535, '0')));
}

TEST(nxPriceConverterParse, DecimalsAndWholeTicksAreHeldAgainstTheTick)
{
    ExpectParses("DECIMALS", {{"25.37", 25.37}, {"25.375", refused}, {"9l2.4", refused}, {"25\0x"sv, 25.0}},
                 "0.01"); // a C string
    ExpectParses("MODIFIED_DECIMALS_100THS", {{"98.50", 9850.0}, {"98.505", refused}}, "1");
    ExpectParses("MODIFIED_DECIMALS_10000THS", {{"0.985", 9850.0}}, "1");
    ExpectParses("FULL",
                 {{"-15", -15.0},
                  {"13", 13.0}, // as every whole number without a manipulator
                  {"-", refused},
                  {"15.0", refused},
                  {"+15", refused},
                  {"15\0"sv, refused}},
                 "5");
}

TEST(nxPriceConverterParse, ForgetsTheLastText)
{
    for (char const* const format :
         {"MODIFIED_HALF_32NDS", "MODIFIED_QUARTER_32NDS", "MODIFIED_EIGHTH_32NDS_TICK_ALT"})
    {
        auto const converter = Converter(format);
        EXPECT_TRUE(converter->SetPriceFromString("101-16+"));
        EXPECT_TRUE(converter->SetPriceFromString("101-16"));
        EXPECT_TRUE(converter->GetPrice() == 101.5) << format;
    }
    auto const hundredths = Converter("MODIFIED_QUARTER_100THS");
    EXPECT_TRUE(hundredths->SetPriceFromString("5.25+"));
    EXPECT_TRUE(hundredths->SetPriceFromString("5.25"));
    EXPECT_TRUE(hundredths->GetPrice() == 7.5);
}

// Whatever is taken prints as a text that gives the same price again; whatever is refused leaves null.
TEST(nxPriceConverterParse, AnyTextIsRefusedOrComesBack)
{
    constexpr std::string_view characters("0123456789012345-+. \0x", 22);
    std::mt19937 random(4501); // the same texts in every run
    ForEachFormat(
        [&](nxPriceConverter& converter)
        {
            (void)converter.SetMinimumTickIncrement(Tick("0.01"));
            int taken = 0;
            for (int count = 0; count < 20000; ++count)
            {
                std::string text;
                for (std::size_t length = 1 + random() % 8; text.size() < length;)
                    text += characters[random() % characters.size()];
                if (!converter.SetPriceFromString(text))
                {
                    ASSERT_TRUE(converter.GetPrice().IsNull()) << text;
                    continue;
                }
                ++taken;
                nxDoubleValueWrapper const price = converter.GetPrice();
                std::string const shown = converter.GetPriceAsString();
                ASSERT_TRUE(converter.SetPriceFromString(shown)) << text << " as " << shown;
                ASSERT_TRUE(converter.GetPrice() == double(price)) << text << " as " << shown;
                ASSERT_EQ(converter.GetPriceAsString(), shown) << text;
            }
            EXPECT_GT(taken, 100);

            (void)converter.SetMinimumTickIncrement(Tick("1"));
            ASSERT_TRUE(converter.SetPrice(7.0, false));
            EXPECT_FALSE(converter.SetPriceFromString(""));
            EXPECT_TRUE(converter.GetPrice() == 7.0); // an empty text leaves the price
            EXPECT_FALSE(converter.SetPriceFromString("x"));
            EXPECT_TRUE(converter.GetPrice().IsNull());
            EXPECT_EQ(converter.GetPriceAsString(), "");
        });
}

TEST(nxPriceConverterSetPrice, HoldsThePriceAgainstTickAndTable)
{
    nxPriceManipulator const none;
    nxPriceManipulator const table = Ladder("VTT_CHIX_EUZ1");
    using Row = std::tuple<char const*, nxPriceManipulator, double, bool>;
    Row const rows[] = {
        {"0.01", none, 100.01, true},
        {"0.01", none, 100.005, false},
        {"0.01", none, 100.010000001, false}, // the tolerance is one of ticks
        {"0.01", nxPriceManipulator(Tick("0.01")), 100.010000001, true},
        {"0.25", none, -0.75, true},
        {"7", none, 10, true}, // without a manipulator every whole number passes
        {"7", none, 10.5, false},
        {"0.01", none, 1234567.89, false}, // the quotient is too far from whole
        {"0.01", nxPriceManipulator(Tick("0.01")), 1234567.89, true},
        {"0.5", nxPriceManipulator(Tick("0.2")), 0.4, true}, // the manipulator's tick is as good
        {"0.5", nxPriceManipulator(Tick("0.2")), 0.3, false},
        {"0.001", table, 9.999, true},
        {"0.001", table, 10.001, false}, // on the minimum tick, off the table
        {"0.001", table, 10.005, true},
        {"1", table, -9.998, true}}; // the table alone counts
    for (auto const& [tick, manipulator, price, set] : rows)
    {
        nxDecimalPriceConverter converter;
        ASSERT_TRUE(converter.SetMinimumTickIncrement(Tick(tick)));
        EXPECT_FALSE(converter.SetPriceManipulator(manipulator)); // always, though it works
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
    for (auto const& [tick, taken] : {std::pair("0.25", true),
                                      {"0.00000001", true},
                                      {"0.000000009", false},
                                      {"0", false},
                                      {"x", false},
                                      {"-1", true}})
    {
        for (char const* const format : {"DECIMALS", "FULL"})
        {
            auto const converter = Converter(format);
            ASSERT_TRUE(converter->SetMinimumTickIncrement(Tick("1")));
            EXPECT_EQ(converter->SetMinimumTickIncrement(Tick(tick)), taken) << tick;
            EXPECT_EQ(converter->GetMinimumTickIncrement().IsNull(), !taken) << tick;
        }
        for (auto const& [format, ticks] : ticksOfAWhole)
        {
            auto const converter = Converter(format);
            EXPECT_TRUE(converter->SetMinimumTickIncrement(Tick(tick)));
            EXPECT_TRUE(converter->GetMinimumTickIncrement() == 1.0 / ticks);
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
    EXPECT_TRUE(converter.ChangePrice(Ticks(3)));
    EXPECT_TRUE(converter.GetPrice() == 100.75);
    EXPECT_TRUE(converter.ChangePrice(Ticks(-7)));
    EXPECT_TRUE(converter.GetPrice() == 99.0);
    EXPECT_FALSE(converter.ChangePrice(Ticks()));
    EXPECT_FALSE(converter.ChangePrice(Ticks(2147483646)));
    EXPECT_TRUE(converter.GetPrice() == 99.0);

    (void)converter.SetPriceManipulator(Ladder("VTT_CHIX_EUZ1"));
    (void)converter.SetPrice(9.998, false);
    EXPECT_TRUE(converter.ChangePrice(Ticks(3)));
    EXPECT_TRUE(converter.GetPrice() == 10.005);

    nxFraction32ndsTickPriceConverter thirtySeconds;
    EXPECT_TRUE(thirtySeconds.SetPriceFromString("101-31"));
    EXPECT_TRUE(thirtySeconds.ChangePrice(Ticks(1)));
    EXPECT_EQ(thirtySeconds.GetPriceAsString(), "102-00");
}

TEST(nxPriceConverterDecimals, PlacesAreThoseOfTickTableAndRatio)
{
    nxDecimalPriceConverter converter;
    EXPECT_EQ(TextOf(converter, 9.5), "10"); // no places without a tick
    (void)converter.SetMinimumTickIncrement(Tick("0.010"));
    EXPECT_EQ(TextOf(converter, 9.5), "9.500");
    EXPECT_EQ(TextOf(converter, -25.37551), "-25.376");
    EXPECT_FALSE(converter.SetMinimumTickIncrement(Tick("0")));
    EXPECT_EQ(TextOf(converter, 9.5), "9.500"); // a refused tick leaves them
    (void)converter.SetMinimumTickIncrement(Tick("0.01"));
    EXPECT_EQ(TextOf(converter, -25.375), "-25.37"); // half up on the number line
    (void)converter.SetMinimumTickIncrement(Tick("0.0000001000000"));
    EXPECT_EQ(TextOf(converter, 0.5), "0.500000000000"); // twelve are shown

    (void)converter.SetPriceManipulator(Ladder("VTT_CHIX_FESE1"));
    EXPECT_EQ(TextOf(converter, 0.5), "0.5000");
    EXPECT_EQ(TextOf(converter, 49.99), "49.990");
    EXPECT_EQ(TextOf(converter, -10000.0), "-10000");
    // 0.0000400 lies in the range above 0.0000045, whose places are six; at four places it counts as 0.
    (void)converter.SetPriceManipulator(Ladder("VTT_CME_02_0_000001"));
    EXPECT_EQ(TextOf(converter, 0.00004), "0.0000400");
    EXPECT_EQ(TextOf(converter, 0.0001), "0.000100");

    auto const hundredths = Converter("MODIFIED_DECIMALS_100THS");
    EXPECT_EQ(TextOf(*hundredths, 9850), "99"); // the ratio's places count from the next tick on
    (void)hundredths->SetMinimumTickIncrement(Tick("0.5"));
    EXPECT_EQ(TextOf(*hundredths, 9850.5), "98.505");
    (void)hundredths->SetPriceManipulator(Ladder("VTT_CHIX_EUZ1"));
    EXPECT_EQ(TextOf(*hundredths, 9850.5), "98.50500"); // three of the table, two of the ratio
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

TEST(nxPriceConverterAllocation, NoneForAShortText)
{
    if (!nxAllocationCount::IsPossible())
        GTEST_SKIP();
    nxFraction32ndsTickPriceConverter thirtySeconds;
    nxFractionModifiedHalf32ndsTickPriceConverter modified;
    nxDecimalPriceConverter decimals;
    (void)decimals.SetMinimumTickIncrement(Tick("0.01"));
    std::string const texts[] = {"101-16", "101-16+", "25.37"};
    nxAllocationCount const count;
    EXPECT_TRUE(thirtySeconds.SetPriceFromString(texts[0]) && thirtySeconds.ChangePrice(Ticks(1)));
    EXPECT_TRUE(modified.SetPriceFromString(texts[1]) && decimals.SetPriceFromString(texts[2]));
    EXPECT_TRUE(thirtySeconds.GetPriceAsString() == "101-17" && modified.GetPriceAsString() == texts[1]);
    EXPECT_EQ(decimals.GetPriceAsString(), texts[2]);
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
