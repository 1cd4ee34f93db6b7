// Prices as texts: every tick of every format there and back, the texts that do not come back, and what is refused.
#include "core/prices/nxPriceConverter.h"

#include "core/prices/nxDecimalPriceConverter.h"
#include "core/prices/nxFraction32ndsTickPriceConverter.h"
#include "core/prices/nxFractionModifiedHalf32ndsTickPriceConverter.h"
#include "core/prices/nxFractionSixteenth32ndsTickPriceConverter.h"
#include "core/prices/nxFractionWholeTickPriceConverter.h"
#include "core/prices/nxPriceConverterHelper.h"
#include "core/prices/nxVariableTickTableContainer.h"
#include "tests/prices/nxAllocationCount.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <random>
#include <set>
#include <type_traits>

static_assert(std::is_abstract_v<nxPriceConverter> && std::has_virtual_destructor_v<nxPriceConverter>);

namespace
{
using Ticks = nxValueWrapper<int, 2147483647, 2147483646>;

std::unique_ptr<nxPriceConverter> Converter(unsigned int format)
{
    return std::unique_ptr<nxPriceConverter>(
        nxPriceConverterHelper::CreatePriceConverter(nxPriceFormatEnum(static_cast<nxEnumValue>(format))));
}

nxDecimal Tick(std::string const& text)
{
    return nxDecimal(text, '.');
}

std::string TextOf(nxPriceConverter& converter, double price)
{
    return converter.SetPrice(price, false) ? converter.GetPriceAsString() : "not set";
}

// Text to price to text is the identity for a price on the tick.
void ExpectRoundTrip(nxPriceConverter& converter, double price)
{
    std::string const text = TextOf(converter, price);
    ASSERT_TRUE(converter.SetPriceFromString(text)) << price << " as \"" << text << '"';
    EXPECT_TRUE(converter.GetPrice() == price) << price << " as \"" << text << '"';
    EXPECT_EQ(converter.GetPriceAsString(), text);
}

struct FormatTicks
{
    nxEnumValue format;
    int ticksOfAWhole;
};

constexpr FormatTicks fractionFormats[] = {
    {NX_PRICE_FORMAT_FRACTION_HALF_TICK, 2},
    {NX_PRICE_FORMAT_FRACTION_QUARTER_TICK, 4},
    {NX_PRICE_FORMAT_FRACTION_MODIFIED_QUARTER_TICK, 4},
    {NX_PRICE_FORMAT_FRACTION_8THS_TICK, 8},
    {NX_PRICE_FORMAT_FRACTION_10THS_TICK, 10},
    {NX_PRICE_FORMAT_FRACTION_12THS_TICK, 12},
    {NX_PRICE_FORMAT_FRACTION_16THS_TICK, 16},
    {NX_PRICE_FORMAT_FRACTION_20THS_TICK, 20},
    {NX_PRICE_FORMAT_FRACTION_32NDS_TICK, 32},
    {NX_PRICE_FORMAT_FRACTION_40THS_TICK, 40},
    {NX_PRICE_FORMAT_FRACTION_64THS_TICK, 64},
    {NX_PRICE_FORMAT_FRACTION_100THS_TICK, 100},
    {NX_PRICE_FORMAT_FRACTION_FIVE_1000THS_TICK, 200},
    {NX_PRICE_FORMAT_FRACTION_HALF_32NDS_TICK, 64},
    {NX_PRICE_FORMAT_FRACTION_QUARTER_32NDS_TICK, 128},
    {NX_PRICE_FORMAT_FRACTION_EIGHTH_32NDS_TICK, 256},
    {NX_PRICE_FORMAT_FRACTION_MODIFIED_EIGHTH_32NDS_TICK, 256},
    {NX_PRICE_FORMAT_FRACTION_MODIFIED_EIGHTH_32NDS_TICK_ALT, 256},
    {NX_PRICE_FORMAT_FRACTION_SIXTEENTH_32NDS_TICK, 512},
    {NX_PRICE_FORMAT_FRACTION_TENTH_32NDS_TICK, 320},
    {NX_PRICE_FORMAT_FRACTION_HALF_64THS_TICK, 128},
    {NX_PRICE_FORMAT_FRACTION_MODIFIED_HALF_32NDS_TICK, 64},
    {NX_PRICE_FORMAT_FRACTION_MODIFIED_QUARTER_32NDS_TICK, 128},
    {NX_PRICE_FORMAT_FRACTION_MODIFIED_QUARTER_100THS_TICK, 400},
};
} // namespace

TEST(nxPriceConverterRoundTrip, HoldsForEveryTickOfTheFractionFormats)
{
    for (FormatTicks const& row : fractionFormats)
    {
        auto const converter = Converter(row.format);
        std::set<std::string> texts;
        for (int const whole : {-102, -1, 0, 101})
        {
            for (int tick = 0; tick < row.ticksOfAWhole; ++tick)
            {
                SCOPED_TRACE(row.format);
                double const price = whole + static_cast<double>(tick) / row.ticksOfAWhole;
                ExpectRoundTrip(*converter, price);
                texts.insert(converter->GetPriceAsString());
            }
        }
        EXPECT_EQ(texts.size(), 4u * static_cast<unsigned int>(row.ticksOfAWhole)) << row.format;
        EXPECT_TRUE(converter->GetMinimumTickIncrement() == 1.0 / row.ticksOfAWhole) << row.format;
    }
}

TEST(nxPriceConverterRoundTrip, HoldsForEveryTickOfTheOtherFormats)
{
    struct Row
    {
        nxEnumValue format;
        char const* tick;
    };
    constexpr Row rows[] = {
        {NX_PRICE_FORMAT_DECIMALS, "0.25"},
        {NX_PRICE_FORMAT_DECIMALS, "0.01"},
        {NX_PRICE_FORMAT_DECIMALS, "0.0005"},
        {NX_PRICE_FORMAT_DECIMALS, "1"},
        {NX_PRICE_FORMAT_MODIFIED_DECIMALS_100THS, "1"},
        {NX_PRICE_FORMAT_MODIFIED_DECIMALS_100THS, "0.25"},
        {NX_PRICE_FORMAT_MODIFIED_DECIMALS_10000THS, "0.5"},
        {NX_PRICE_FORMAT_FRACTION_FULL_TICK, "1"},
        {NX_PRICE_FORMAT_FRACTION_FULL_TICK, "5"},
    };
    for (Row const& row : rows)
    {
        auto const converter = Converter(row.format);
        double const tick = Tick(row.tick).GetAsDouble();
        ASSERT_TRUE(converter->SetMinimumTickIncrement(Tick(row.tick)));
        for (int count = -4100; count <= 4100; ++count)
        {
            SCOPED_TRACE(row.tick);
            ExpectRoundTrip(*converter, count * tick);
        }
    }
}

namespace
{
struct TextRow
{
    nxEnumValue format;
    double price;
    char const* text;
};
} // namespace

TEST(nxPriceConverterText, IsOfTheFormat)
{
    constexpr TextRow rows[] = {
        {NX_PRICE_FORMAT_FRACTION_HALF_TICK, 101.5, "101-5"},
        {NX_PRICE_FORMAT_FRACTION_HALF_TICK, -0.5, "-0-5"},
        {NX_PRICE_FORMAT_FRACTION_QUARTER_TICK, 712.25, "712-2"},
        {NX_PRICE_FORMAT_FRACTION_MODIFIED_QUARTER_TICK, 712.75, "712-7"},
        {NX_PRICE_FORMAT_FRACTION_8THS_TICK, 101.625, "101-5"},
        {NX_PRICE_FORMAT_FRACTION_10THS_TICK, 101.3, "101-3"},
        {NX_PRICE_FORMAT_FRACTION_12THS_TICK, 100 + 1.0 / 12, "100-01"},
        {NX_PRICE_FORMAT_FRACTION_16THS_TICK, 101.5, "101-08"},
        {NX_PRICE_FORMAT_FRACTION_20THS_TICK, 101.15, "101-15"},
        {NX_PRICE_FORMAT_FRACTION_32NDS_TICK, 101.5, "101-16"},
        {NX_PRICE_FORMAT_FRACTION_40THS_TICK, 101.325, "101-32"},
        {NX_PRICE_FORMAT_FRACTION_64THS_TICK, 101.5, "101-32"},
        {NX_PRICE_FORMAT_FRACTION_100THS_TICK, 101.05, "101-05"},
        {NX_PRICE_FORMAT_FRACTION_FIVE_1000THS_TICK, 101.005, "101-005"},
        {NX_PRICE_FORMAT_FRACTION_HALF_32NDS_TICK, 101.515625, "101-165"},
        {NX_PRICE_FORMAT_FRACTION_HALF_32NDS_TICK, 101, "101-000"},
        {NX_PRICE_FORMAT_FRACTION_QUARTER_32NDS_TICK, 101 + 16.25 / 32, "101-162"},
        {NX_PRICE_FORMAT_FRACTION_QUARTER_32NDS_TICK, 101 + 16.75 / 32, "101-167"},
        {NX_PRICE_FORMAT_FRACTION_EIGHTH_32NDS_TICK, 101 + 16.5 / 32, "101-164"},
        {NX_PRICE_FORMAT_FRACTION_MODIFIED_EIGHTH_32NDS_TICK, 101 + 16.5 / 32, "101-165"},
        {NX_PRICE_FORMAT_FRACTION_MODIFIED_EIGHTH_32NDS_TICK, 101 + 16.875 / 32, "101-168"},
        {NX_PRICE_FORMAT_FRACTION_MODIFIED_EIGHTH_32NDS_TICK_ALT, 101 + 16.5 / 32, "101-16+"},
        {NX_PRICE_FORMAT_FRACTION_MODIFIED_EIGHTH_32NDS_TICK_ALT, 101.5, "101-16 "},
        {NX_PRICE_FORMAT_FRACTION_SIXTEENTH_32NDS_TICK, 101 + 16.5 / 32, "101-1608"},
        {NX_PRICE_FORMAT_FRACTION_TENTH_32NDS_TICK, 101 + 16.5 / 32, "101-165"},
        {NX_PRICE_FORMAT_FRACTION_HALF_64THS_TICK, 101 + 16.5 / 64, "101-165"},
        {NX_PRICE_FORMAT_FRACTION_MODIFIED_HALF_32NDS_TICK, 101 + 16.5 / 32, "101-16+"},
        {NX_PRICE_FORMAT_FRACTION_MODIFIED_HALF_32NDS_TICK, 101.5, "101-16 "},
        {NX_PRICE_FORMAT_FRACTION_MODIFIED_QUARTER_32NDS_TICK, 101 + 16.75 / 32, "101-166"},
        {NX_PRICE_FORMAT_FRACTION_MODIFIED_QUARTER_100THS_TICK, 5.2525, "5.252"},
        {NX_PRICE_FORMAT_FRACTION_MODIFIED_QUARTER_100THS_TICK, 5.25, "5.25 "},
        {NX_PRICE_FORMAT_FRACTION_FULL_TICK, 99.9999999999, "99"},
        {NX_PRICE_FORMAT_FRACTION_FULL_TICK, -0.5, "0"},
    };
    for (TextRow const& row : rows)
        EXPECT_EQ(TextOf(*Converter(row.format), row.price), row.text) << "format " << row.format;
}

TEST(nxPriceConverterText, NeverCarriesIntoTheNextPart)
{
    constexpr TextRow rows[] = {
        {NX_PRICE_FORMAT_FRACTION_32NDS_TICK, 100.999, "100-32"},
        {NX_PRICE_FORMAT_FRACTION_32NDS_TICK, 100.015625, "100-00"}, // half a part is not rounded up
        {NX_PRICE_FORMAT_FRACTION_10THS_TICK, 1.99, "1-10"},
        {NX_PRICE_FORMAT_FRACTION_20THS_TICK, 1.99, "1-100"},
        {NX_PRICE_FORMAT_FRACTION_FIVE_1000THS_TICK, 1.999, "1-1000"},
        {NX_PRICE_FORMAT_FRACTION_QUARTER_TICK, 712.99, "712-6"}, // the last entry
        {NX_PRICE_FORMAT_FRACTION_MODIFIED_QUARTER_TICK, 712.99, "712-7"},
        {NX_PRICE_FORMAT_FRACTION_HALF_TICK, 1.99, "1-5"},
        {NX_PRICE_FORMAT_FRACTION_EIGHTH_32NDS_TICK, 101 + 16.99 / 32,
         "101-16"}, // no digit for an eighth eighth
        {NX_PRICE_FORMAT_FRACTION_MODIFIED_EIGHTH_32NDS_TICK, 101 + 16.99 / 32, "101-16"},
        {NX_PRICE_FORMAT_FRACTION_MODIFIED_EIGHTH_32NDS_TICK_ALT, 101 + 16.99 / 32, "101-16"},
        {NX_PRICE_FORMAT_FRACTION_HALF_64THS_TICK, 101 + 16.99 / 64, "101-16"},
        {NX_PRICE_FORMAT_FRACTION_HALF_32NDS_TICK, 101 + 16.99 / 32, "101-165"},
        {NX_PRICE_FORMAT_FRACTION_TENTH_32NDS_TICK, 101 + 16.99 / 32, "101-169"},
        {NX_PRICE_FORMAT_FRACTION_SIXTEENTH_32NDS_TICK, 101 + 16.99 / 32, "101-1616"},
        {NX_PRICE_FORMAT_FRACTION_MODIFIED_QUARTER_32NDS_TICK, 101 + 16.99 / 32, "101-166"},
        // Far from zero the rest of a hundredth is no longer within 1e-8 of one.
        {NX_PRICE_FORMAT_FRACTION_MODIFIED_QUARTER_100THS_TICK, 12345678.01, "12345678.006"},
    };
    for (TextRow const& row : rows)
        EXPECT_EQ(TextOf(*Converter(row.format), row.price), row.text) << "format " << row.format;
}

TEST(nxPriceConverterText, TakesAPriceBesideAWholeNumberForWhole)
{
    constexpr TextRow rows[] = {
        {NX_PRICE_FORMAT_FRACTION_32NDS_TICK, 99.999999999, "100-00"},
        {NX_PRICE_FORMAT_FRACTION_32NDS_TICK, -99.999999999, "-100-00"},
        {NX_PRICE_FORMAT_FRACTION_32NDS_TICK, 100.000000001, "100-00"},
        {NX_PRICE_FORMAT_FRACTION_32NDS_TICK, -0.999999999, "-1-00"},
        {NX_PRICE_FORMAT_FRACTION_32NDS_TICK, -0.000000001, "0-00"},
        {NX_PRICE_FORMAT_FRACTION_32NDS_TICK, -0.001, "-0-00"}, // the sign of a price that shows as zero
        {NX_PRICE_FORMAT_FRACTION_32NDS_TICK, 3000000000.5, "3000000000-16"},
        {NX_PRICE_FORMAT_FRACTION_HALF_32NDS_TICK, 100 + 15.999999999 / 32, "100-160"},
    };
    for (TextRow const& row : rows)
        EXPECT_EQ(TextOf(*Converter(row.format), row.price), row.text) << row.price;
}

TEST(nxPriceConverterText, IsDefinedForWhatIsNoPrice)
{
    for (double const price :
         {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
          -std::numeric_limits<double>::infinity(), 1e300, -1e300})
    {
        EXPECT_EQ(TextOf(*Converter(NX_PRICE_FORMAT_FRACTION_32NDS_TICK), price), "-9223372036854775808-00")
            << price;
        EXPECT_EQ(TextOf(*Converter(NX_PRICE_FORMAT_FRACTION_FULL_TICK), price), "-9223372036854775808")
            << price;
    }
}

namespace
{
// A text that is taken gives its price, one that is refused a null.
constexpr double refused = 4503599627370495.0;

struct ParseRow
{
    nxEnumValue format;
    std::string_view text;
    double price;
};

void ExpectParse(ParseRow const& row)
{
    auto const converter = Converter(row.format);
    (void)converter->SetPrice(7.0, false);
    EXPECT_EQ(converter->SetPriceFromString(std::string(row.text)), row.price != refused)
        << "format " << row.format << " \"" << row.text << '"';
    EXPECT_TRUE(converter->GetPrice() == row.price)
        << "format " << row.format << " \"" << row.text << "\" is " << double(converter->GetPrice());
}
} // namespace

TEST(nxPriceConverterParse, TakesOneTextForEachDigit)
{
    constexpr ParseRow rows[] = {
        {NX_PRICE_FORMAT_FRACTION_HALF_TICK, "101-4", refused},
        {NX_PRICE_FORMAT_FRACTION_QUARTER_TICK, "712-4", 712.5},
        {NX_PRICE_FORMAT_FRACTION_QUARTER_TICK, "712-3", refused},
        {NX_PRICE_FORMAT_FRACTION_MODIFIED_QUARTER_TICK, "712-6", refused},
        {NX_PRICE_FORMAT_FRACTION_8THS_TICK, "1-8", refused},
        {NX_PRICE_FORMAT_FRACTION_12THS_TICK, "1-09", 1.75},
        {NX_PRICE_FORMAT_FRACTION_12THS_TICK, "1-12", 2.0}, // let in
        {NX_PRICE_FORMAT_FRACTION_12THS_TICK, "1-13", refused},
        {NX_PRICE_FORMAT_FRACTION_12THS_TICK, "1-20", refused},
        {NX_PRICE_FORMAT_FRACTION_16THS_TICK, "1-15", 1.9375},
        {NX_PRICE_FORMAT_FRACTION_16THS_TICK, "1-16", refused},
        {NX_PRICE_FORMAT_FRACTION_16THS_TICK, "1-09", 1.5625},
        {NX_PRICE_FORMAT_FRACTION_20THS_TICK, "1-95", 1.95},
        {NX_PRICE_FORMAT_FRACTION_20THS_TICK, "1-93", refused},
        {NX_PRICE_FORMAT_FRACTION_32NDS_TICK, "1-31", 1.96875},
        {NX_PRICE_FORMAT_FRACTION_32NDS_TICK, "1-32", refused},
        {NX_PRICE_FORMAT_FRACTION_32NDS_TICK, "1-29", 1.90625},
        {NX_PRICE_FORMAT_FRACTION_32NDS_TICK, "1-40", refused},
        {NX_PRICE_FORMAT_FRACTION_40THS_TICK, "1-97", 1.975},
        {NX_PRICE_FORMAT_FRACTION_40THS_TICK, "1-96", refused},
        {NX_PRICE_FORMAT_FRACTION_64THS_TICK, "1-63", 1.984375},
        {NX_PRICE_FORMAT_FRACTION_64THS_TICK, "1-64", refused},
        {NX_PRICE_FORMAT_FRACTION_64THS_TICK, "1-70", refused},
        {NX_PRICE_FORMAT_FRACTION_HALF_32NDS_TICK, "112-163", refused},
        {NX_PRICE_FORMAT_FRACTION_HALF_32NDS_TICK, "112-320", refused},
        {NX_PRICE_FORMAT_FRACTION_QUARTER_32NDS_TICK, "1-016", refused},
        {NX_PRICE_FORMAT_FRACTION_EIGHTH_32NDS_TICK, "1-317", 1 + 255.0 / 256},
        {NX_PRICE_FORMAT_FRACTION_EIGHTH_32NDS_TICK, "1-008", refused},
        {NX_PRICE_FORMAT_FRACTION_MODIFIED_EIGHTH_32NDS_TICK, "101-165", 101 + 16.5 / 32},
        {NX_PRICE_FORMAT_FRACTION_MODIFIED_EIGHTH_32NDS_TICK, "101-164", refused},
        {NX_PRICE_FORMAT_FRACTION_MODIFIED_EIGHTH_32NDS_TICK, "1-320", 2.0}, // let in
        {NX_PRICE_FORMAT_FRACTION_MODIFIED_EIGHTH_32NDS_TICK, "1-390", 1 + 39.0 / 32},
        {NX_PRICE_FORMAT_FRACTION_MODIFIED_EIGHTH_32NDS_TICK_ALT, "101-16", 101.5},
        {NX_PRICE_FORMAT_FRACTION_MODIFIED_EIGHTH_32NDS_TICK_ALT, "101-164", 101 + 16.5 / 32},
        {NX_PRICE_FORMAT_FRACTION_MODIFIED_EIGHTH_32NDS_TICK_ALT, "101-320", refused},
        {NX_PRICE_FORMAT_FRACTION_SIXTEENTH_32NDS_TICK, "0-0019", 19.0 / 512}, // any last digit
        {NX_PRICE_FORMAT_FRACTION_SIXTEENTH_32NDS_TICK, "0-0020", refused},
        {NX_PRICE_FORMAT_FRACTION_TENTH_32NDS_TICK, "0-319", 319.0 / 320},
        {NX_PRICE_FORMAT_FRACTION_TENTH_32NDS_TICK, "0-320", refused},
        {NX_PRICE_FORMAT_FRACTION_HALF_64THS_TICK, "0-635", 127.0 / 128},
        {NX_PRICE_FORMAT_FRACTION_HALF_64THS_TICK, "0-640", refused},
        {NX_PRICE_FORMAT_FRACTION_FIVE_1000THS_TICK, "0-995", 0.995},
        {NX_PRICE_FORMAT_FRACTION_FIVE_1000THS_TICK, "0-994", refused},
        {NX_PRICE_FORMAT_FRACTION_MODIFIED_HALF_32NDS_TICK, "101-16", 101.5},
        {NX_PRICE_FORMAT_FRACTION_MODIFIED_HALF_32NDS_TICK, "101-161", refused},
        {NX_PRICE_FORMAT_FRACTION_MODIFIED_HALF_32NDS_TICK, "101-1", refused},
        {NX_PRICE_FORMAT_FRACTION_MODIFIED_QUARTER_32NDS_TICK, "101-165", 101 + 16.5 / 32},
        {NX_PRICE_FORMAT_FRACTION_MODIFIED_QUARTER_32NDS_TICK, "101-167", refused},
        {NX_PRICE_FORMAT_FRACTION_MODIFIED_QUARTER_100THS_TICK, "5.250", 5.25},
        {NX_PRICE_FORMAT_FRACTION_MODIFIED_QUARTER_100THS_TICK, "5.25", 7.5}, // ten times the fraction
        {NX_PRICE_FORMAT_FRACTION_MODIFIED_QUARTER_100THS_TICK, "0.01", 0.1},
        {NX_PRICE_FORMAT_FRACTION_MODIFIED_QUARTER_100THS_TICK, "5", 5.0},
        {NX_PRICE_FORMAT_FRACTION_MODIFIED_QUARTER_100THS_TICK, ".25 ", 0.25},
        {NX_PRICE_FORMAT_FRACTION_MODIFIED_QUARTER_100THS_TICK, "-.25+", -0.255},
        {NX_PRICE_FORMAT_FRACTION_MODIFIED_QUARTER_100THS_TICK, "5-250", refused},
    };
    for (ParseRow const& row : rows)
        ExpectParse(row);
}

TEST(nxPriceConverterParse, ForgetsTheLastTextsThirdPosition)
{
    for (nxEnumValue const format : {NX_PRICE_FORMAT_FRACTION_MODIFIED_HALF_32NDS_TICK,
                                     NX_PRICE_FORMAT_FRACTION_MODIFIED_QUARTER_32NDS_TICK,
                                     NX_PRICE_FORMAT_FRACTION_MODIFIED_EIGHTH_32NDS_TICK_ALT})
    {
        auto const converter = Converter(format);
        EXPECT_TRUE(converter->SetPriceFromString("101-16+"));
        EXPECT_TRUE(converter->SetPriceFromString("101-16"));
        EXPECT_TRUE(converter->GetPrice() == 101.5) << format;
    }
    auto const hundredths = Converter(NX_PRICE_FORMAT_FRACTION_MODIFIED_QUARTER_100THS_TICK);
    EXPECT_TRUE(hundredths->SetPriceFromString("5.25+"));
    EXPECT_TRUE(hundredths->SetPriceFromString("5.25"));
    EXPECT_TRUE(hundredths->GetPrice() == 7.5);
}

TEST(nxPriceConverterParse, ReadsSignsAndSeparatorsWhereTheyStand)
{
    using namespace std::string_view_literals;
    constexpr ParseRow rows[] = {
        {NX_PRICE_FORMAT_FRACTION_32NDS_TICK, "101", 101.0},
        {NX_PRICE_FORMAT_FRACTION_32NDS_TICK, "-1-16", -1.5},
        {NX_PRICE_FORMAT_FRACTION_32NDS_TICK, "--16", -0.5},
        {NX_PRICE_FORMAT_FRACTION_32NDS_TICK, "-16", -16.0},
        {NX_PRICE_FORMAT_FRACTION_32NDS_TICK, "-", 0.0},
        {NX_PRICE_FORMAT_FRACTION_32NDS_TICK, "1-1", refused},
        {NX_PRICE_FORMAT_FRACTION_32NDS_TICK, "1-161", refused},
        {NX_PRICE_FORMAT_FRACTION_32NDS_TICK, "1-", refused},
        {NX_PRICE_FORMAT_FRACTION_32NDS_TICK, "1-0-", refused},
        {NX_PRICE_FORMAT_FRACTION_32NDS_TICK, "1-16-16", refused},
        {NX_PRICE_FORMAT_FRACTION_32NDS_TICK, "1.16", refused},
        {NX_PRICE_FORMAT_FRACTION_32NDS_TICK, "+1-16", refused},
        {NX_PRICE_FORMAT_FRACTION_32NDS_TICK, " 1-16", refused},
        {NX_PRICE_FORMAT_FRACTION_32NDS_TICK, "1-16\0"sv, refused}, // by its length
        {NX_PRICE_FORMAT_FRACTION_32NDS_TICK, "1\0"sv, refused},
        {NX_PRICE_FORMAT_FRACTION_MODIFIED_HALF_32NDS_TICK, "1+ -16+", 150.515625}, // '+' is 5, ' ' is 0
        {NX_PRICE_FORMAT_FRACTION_MODIFIED_HALF_32NDS_TICK, "+", 5.0},
        {NX_PRICE_FORMAT_FRACTION_MODIFIED_HALF_32NDS_TICK, "1--16", refused},
        {NX_PRICE_FORMAT_FRACTION_MODIFIED_QUARTER_100THS_TICK, "1..16", refused},
        {NX_PRICE_FORMAT_FRACTION_MODIFIED_EIGHTH_32NDS_TICK_ALT, "+", 4.0},
        {NX_PRICE_FORMAT_FRACTION_MODIFIED_EIGHTH_32NDS_TICK_ALT, "1 - 8+", 10.265625},
        {NX_PRICE_FORMAT_FRACTION_FULL_TICK, "5", refused}, // no tick yet
        {NX_PRICE_FORMAT_DECIMALS, "5", refused},
    };
    for (ParseRow const& row : rows)
        ExpectParse(row);
    EXPECT_FALSE(Converter(NX_PRICE_FORMAT_FRACTION_32NDS_TICK)->SetPriceFromString(std::string(65536, '0')));
    EXPECT_TRUE(Converter(NX_PRICE_FORMAT_FRACTION_32NDS_TICK)->SetPriceFromString(std::string(65535, '0')));
}

TEST(nxPriceConverterParse, DecimalsAndWholeTicksAreHeldAgainstTheTick)
{
    struct Row
    {
        nxEnumValue format;
        char const* tick;
        std::string text;
        double price;
    };
    Row const rows[] = {
        {NX_PRICE_FORMAT_DECIMALS, "0.01", "25.37", 25.37},
        {NX_PRICE_FORMAT_DECIMALS, "0.01", "25.375", refused},
        {NX_PRICE_FORMAT_DECIMALS, "0.01", "9l2.4", refused},
        {NX_PRICE_FORMAT_DECIMALS, "0.01", std::string("25\0x", 4), 25.0}, // a C string
        {NX_PRICE_FORMAT_MODIFIED_DECIMALS_100THS, "1", "98.50", 9850.0},
        {NX_PRICE_FORMAT_MODIFIED_DECIMALS_100THS, "1", "98.505", refused},
        {NX_PRICE_FORMAT_MODIFIED_DECIMALS_10000THS, "1", "0.985", 9850.0},
        {NX_PRICE_FORMAT_FRACTION_FULL_TICK, "5", "-15", -15.0},
        {NX_PRICE_FORMAT_FRACTION_FULL_TICK, "5", "13", 13.0}, // as every whole number without a manipulator
        {NX_PRICE_FORMAT_FRACTION_FULL_TICK, "5", "-", refused},
        {NX_PRICE_FORMAT_FRACTION_FULL_TICK, "5", "15.0", refused},
        {NX_PRICE_FORMAT_FRACTION_FULL_TICK, "5", "+15", refused},
        {NX_PRICE_FORMAT_FRACTION_FULL_TICK, "5", std::string("15\0", 3), refused},
    };
    for (Row const& row : rows)
    {
        auto const converter = Converter(row.format);
        ASSERT_TRUE(converter->SetMinimumTickIncrement(Tick(row.tick)));
        (void)converter->SetPrice(5.0, true);
        EXPECT_EQ(converter->SetPriceFromString(row.text), row.price != refused) << row.text;
        EXPECT_TRUE(converter->GetPrice() == row.price) << row.text;
    }
}

// Whatever is taken prints as a text that gives the same price again; whatever is refused leaves null.
TEST(nxPriceConverterParse, AnyTextIsRefusedOrComesBack)
{
    constexpr std::string_view characters("0123456789012345-+. \0x", 22);
    std::mt19937 random(4501); // the same texts in every run
    for (unsigned int format = NX_PRICE_FORMAT_DECIMALS;
         format <= NX_PRICE_FORMAT_FRACTION_MODIFIED_EIGHTH_32NDS_TICK_ALT; ++format)
    {
        auto const converter = Converter(format);
        (void)converter->SetMinimumTickIncrement(Tick("0.01"));
        int taken = 0;
        for (int count = 0; count < 20000; ++count)
        {
            std::string text;
            for (std::size_t length = 1 + random() % 8; text.size() < length;)
                text += characters[random() % characters.size()];
            if (!converter->SetPriceFromString(text))
            {
                ASSERT_TRUE(converter->GetPrice().IsNull()) << format << ' ' << text;
                continue;
            }
            ++taken;
            nxDoubleValueWrapper const price = converter->GetPrice();
            std::string const shown = converter->GetPriceAsString();
            ASSERT_TRUE(converter->SetPriceFromString(shown)) << format << ' ' << text << " as " << shown;
            ASSERT_TRUE(converter->GetPrice() == double(price)) << format << ' ' << text << " as " << shown;
            ASSERT_EQ(converter->GetPriceAsString(), shown) << format << ' ' << text;
        }
        EXPECT_GT(taken, 100) << format;
    }
}

TEST(nxPriceConverterParse, AnEmptyTextLeavesThePrice)
{
    for (unsigned int format = NX_PRICE_FORMAT_DECIMALS;
         format <= NX_PRICE_FORMAT_FRACTION_MODIFIED_EIGHTH_32NDS_TICK_ALT; ++format)
    {
        auto const converter = Converter(format);
        (void)converter->SetMinimumTickIncrement(Tick("1"));
        ASSERT_TRUE(converter->SetPrice(7.0, false));
        EXPECT_FALSE(converter->SetPriceFromString("")) << format;
        EXPECT_TRUE(converter->GetPrice() == 7.0) << format;
        EXPECT_FALSE(converter->SetPriceFromString("x")) << format;
        EXPECT_TRUE(converter->GetPrice().IsNull()) << format;
        EXPECT_EQ(converter->GetPriceAsString(), "") << format;
    }
}

TEST(nxPriceConverterSetPrice, HoldsThePriceAgainstTickAndTable)
{
    nxPriceManipulator const none;
    nxPriceManipulator const table(nxVariableTickTableContainer::GetVariableTickTable("VTT_CHIX_EUZ1"));
    struct Row
    {
        char const* tick;
        nxPriceManipulator manipulator;
        double price;
        bool set;
    };
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
        {"1", table, -9.998, true}, // the table alone counts
    };
    for (Row const& row : rows)
    {
        nxDecimalPriceConverter converter;
        ASSERT_TRUE(converter.SetMinimumTickIncrement(Tick(row.tick)));
        EXPECT_FALSE(converter.SetPriceManipulator(row.manipulator)); // always, though it works
        EXPECT_EQ(converter.SetPrice(row.price, true), row.set) << row.price << " by " << row.tick;
        EXPECT_EQ(double(converter.GetPrice()), row.set ? row.price : refused) << row.price;
        EXPECT_TRUE(converter.SetPrice(row.price, false));
        EXPECT_EQ(double(converter.GetPrice()), row.price); // as given, not rounded
    }
}

TEST(nxPriceConverterSetPrice, MissesTheTickOfTwelfths)
{
    auto const twelfths = Converter(NX_PRICE_FORMAT_FRACTION_12THS_TICK);
    EXPECT_EQ(double(twelfths->GetMinimumTickIncrement()), 0.083333333);
    EXPECT_FALSE(twelfths->SetPrice(100 + 1.0 / 12, true));
    EXPECT_TRUE(twelfths->SetPriceFromString("100-01"));
}

TEST(nxPriceConverterSetPrice, NoChangeAndAMissingTickLeaveNull)
{
    nxDecimalPriceConverter converter;
    EXPECT_TRUE(converter.SetPrice(7.0, false));
    EXPECT_FALSE(converter.SetPrice(nxDoubleValueWrapper::GetNoChangeInstance(), false));
    EXPECT_TRUE(converter.GetPrice().IsNull());
    EXPECT_TRUE(converter.SetPrice(7.0, false));
    EXPECT_FALSE(converter.SetPrice(7.0, true));
    EXPECT_TRUE(converter.GetPrice().IsNull());
}

TEST(nxPriceConverterTick, IsTheHostsForDecimalsAndWholeTicksAlone)
{
    struct Row
    {
        char const* tick;
        bool taken;
    };
    constexpr Row rows[] = {{"0.25", true}, {"0.00000001", true}, {"0.000000009", false},
                            {"0", false},   {"x", false},         {"-1", true}};
    for (Row const& row : rows)
    {
        for (nxEnumValue const format : {NX_PRICE_FORMAT_DECIMALS, NX_PRICE_FORMAT_FRACTION_FULL_TICK})
        {
            auto const converter = Converter(format);
            ASSERT_TRUE(converter->SetMinimumTickIncrement(Tick("1")));
            EXPECT_EQ(converter->SetMinimumTickIncrement(Tick(row.tick)), row.taken) << row.tick;
            EXPECT_EQ(converter->GetMinimumTickIncrement().IsNull(), !row.taken) << row.tick;
        }
        for (FormatTicks const& fraction : fractionFormats)
        {
            auto const converter = Converter(fraction.format);
            EXPECT_TRUE(converter->SetMinimumTickIncrement(Tick(row.tick)));
            EXPECT_TRUE(converter->GetMinimumTickIncrement() == 1.0 / fraction.ticksOfAWhole);
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

    (void)converter.SetPriceManipulator(
        nxPriceManipulator(nxVariableTickTableContainer::GetVariableTickTable("VTT_CHIX_EUZ1")));
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

    (void)converter.SetPriceManipulator(
        nxPriceManipulator(nxVariableTickTableContainer::GetVariableTickTable("VTT_CHIX_FESE1")));
    EXPECT_EQ(TextOf(converter, 0.5), "0.5000");
    EXPECT_EQ(TextOf(converter, 49.99), "49.990");
    EXPECT_EQ(TextOf(converter, -10000.0), "-10000");

    auto const hundredths = Converter(NX_PRICE_FORMAT_MODIFIED_DECIMALS_100THS);
    EXPECT_EQ(TextOf(*hundredths, 9850), "99"); // the ratio's places count from the next tick on
    (void)hundredths->SetMinimumTickIncrement(Tick("0.5"));
    EXPECT_EQ(TextOf(*hundredths, 9850.5), "98.505");
    (void)hundredths->SetPriceManipulator(
        nxPriceManipulator(nxVariableTickTableContainer::GetVariableTickTable("VTT_CHIX_EUZ1")));
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

TEST(nxPriceConverterDecimals, ATableIsLookedUpAtFourPlaces)
{
    nxDecimalPriceConverter converter;
    (void)converter.SetPriceManipulator(
        nxPriceManipulator(nxVariableTickTableContainer::GetVariableTickTable("VTT_CME_02_0_000001")));
    // 0.0000400 lies in the range above 0.0000045, whose places are six; at four places it counts as 0.
    EXPECT_EQ(TextOf(converter, 0.00004), "0.0000400");
    EXPECT_EQ(TextOf(converter, 0.0001), "0.000100");
}

TEST(nxPriceConverterPlaces, SixteenthsOfAThirtySecondNeedNine)
{
    EXPECT_EQ(nxFraction32ndsTickPriceConverter().GetMaxFractionDecimalPlaces(), 8);
    EXPECT_EQ(nxDecimalPriceConverter().GetMaxFractionDecimalPlaces(), 8);
    EXPECT_EQ(nxFractionSixteenth32ndsTickPriceConverter().GetMaxFractionDecimalPlaces(), 9);
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
