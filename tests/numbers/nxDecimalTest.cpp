// What a decimal holds, how it is read, printed, compared, rounded and calculated with, and that all steps
// are those of doubles. Also what numbers and their texts must not cost: memory. A fuzz target holds what is
// the same for all values.
#include "core/numbers/nxDecimal.h"
#include "core/text/nxOStream.h"
#include "core/text/nxSimpleAsciiStringWriter.h"
#include "core/text/nxStringHelper.h"
#include "tests/prices/nxAllocationCount.h"

#include <gtest/gtest.h>

#include <bit>
#include <random>
#include <tuple>

static_assert(std::is_trivially_destructible_v<nxDecimal>);
static_assert(std::is_convertible_v<nxNullInitalizer, nxDecimal>);
static_assert(!std::is_convertible_v<std::string, nxDecimal>);

namespace
{

constexpr auto Raw = nxDecimal::ConstructFromValueAndDecimalPlaces;

/// Value and places as "500@2"; for what is not valid, and so must be cleared, the status.
std::string Held(nxDecimal const& decimal)
{
    std::string const number =
        std::to_string(decimal.GetValue()) + '@' + std::to_string(decimal.GetDecimalPlaces());
    return number == "0@0" && !decimal.IsValid() ? decimal.GetStatus().GetAsString() : number;
}

} // namespace

TEST(nxDecimal, HoldsAValueAndPlaces)
{
    nxDecimal noChange(nxNoChangeInitalizer{});
    noChange.SetDecimalPlaces(3, false);
    noChange.InvertSign();
    nxDecimal decimal("1.5");
    EXPECT_EQ(&-decimal, &decimal);
    nxDecimal self(nxDecimal::Abs(decimal));
    self += self;
    self *= self;
    self.Round(self, NX_ROUNDING_METHOD_UP);
    using Row = std::pair<nxDecimal, char const*>;
    for (auto const& [value, held] :
         {Row{nxDecimal(5, 2), "500@2"}, Row{nxDecimal(1, 64), "0@64"}, // 10^64 wraps to 0
          Row{nxDecimal(0.1 + 0.2, 2), "30@2"}, Row{nxDecimal(1, 320, 7), "31250@7"},
          Row{nxDecimal(1, 0, 1), "-9223372036854775808@1"}, Row{nxDecimal("abc", '.'), "NULL"},
          Row{nxNullInitalizer{}, "NULL"}, Row{noChange, "NOCHANGE"}, Row{decimal, "-15@1"},
          Row{self, "90@1"}})
        EXPECT_EQ(Held(value), held);

    decimal.SetNull();
    EXPECT_FALSE(decimal.IsZero() || decimal.IsPositive() || decimal.IsNegative());
    for (auto const& [given, encoded] :
         {std::pair(decimal, 0x7FFFFFFFFFFFFFFF), {noChange, 0x7FFFFFFFFFFFFFFE}, {Raw(-5, 0), -5}})
    {
        long long value = 7;
        unsigned char places = 7;
        given.GetAsEncodedValues(value, places);
        EXPECT_TRUE(value == encoded && places == 0) << encoded;
    }
}

TEST(nxDecimal, RoundsToAMultipleOfTheStep)
{
    using Row = std::tuple<char const*, char const*, char const*, char const*, char const*, char const*>;
    Row const rows[] = {
#include "tests/numbers/rounding.def"
    };
    for (auto const& [value, step, down, up, nearest, modifiedNearest] : rows)
    {
        for (auto const& [method, rounded] : {std::pair(NX_ROUNDING_METHOD_DOWN, down),
                                              {NX_ROUNDING_METHOD_UP, up},
                                              {NX_ROUNDING_METHOD_NEAREST, nearest},
                                              {NX_UNDEFINED, nearest},
                                              {NX_ROUNDING_METHOD_MODIFIED_NEAREST, modifiedNearest}})
        {
            nxDecimal decimal(value, '.');
            decimal.Round(nxDecimal(step, '.'), method);
            EXPECT_EQ(decimal.GetAsLogString(), rounded) << value << " by " << step << ' ' << method;
        }
    }
}

TEST(nxDecimal, HasItsTextWhereThePowersOfTenWrap)
{
    constexpr long long smallest = -0x7FFFFFFFFFFFFFFF - 1;
    using Row = std::tuple<nxDecimal, unsigned char, char const*>;
    for (auto const& [decimal, maximumPlaces, text] :
         {Row{Raw(smallest, 20), 12, "-1.014570924054"}, Row{Raw(smallest, 64), 12, "-0.000000000000"},
          Row{Raw(7, 25), 12, "0.000000000000"}, Row{Raw(7, 255), 0, "0"}})
        EXPECT_EQ(decimal.GetAsTrimmedString(maximumPlaces, '.'), text);

    nxOStream<nxSimpleAsciiStringWriter> stream;
    for (nxDecimal const& decimal : {nxDecimal("1.2345678901234567"), Raw(5, 62), Raw(-5, 63)})
        decimal.Write(stream, '.');
    EXPECT_EQ(stream.GetAsString(), "1.2345678901234567" // the stream shows all places
                                    "0." +
                                        std::string(61, '0') +
                                        "5-0"); // but those its scratch buffer has no room for
}

TEST(nxDecimal, HasAllFormsOfText)
{
    nxDecimal const decimal("-12.50");
    nxDecimal const null = nxDecimal::GetNullDecimal();
    nxDecimal const noChange = nxDecimal::GetNoChangeDecimal();
    std::string text("old");
    decimal.GetAsString(text, ',');
    nxStringHelper::AppendAsString(text, decimal);
    text += nxStringHelper::GetAsString(decimal);
    EXPECT_EQ(text, "-12,50-12.50-12.50");
    decimal.GetAsLogString(text);
    null.AppendAsLogString(text);
    text += noChange.GetAsLogString() + decimal.GetAsTrimmedLogString(1) + null.GetAsTrimmedLogString(1);
    EXPECT_EQ(text, "-12.50NULLNO_CHANGE-12.5NULL");
    char buffer[nxDecimal::maximumTextSize];
    for (auto const& [given, logged] : {std::pair(noChange, "NO_CHANGE"), {decimal, "-12,50"}})
    {
        given.GetAsLogString(buffer, ',');
        EXPECT_STREQ(buffer, logged);
    }

    nxDecimal read("7.0");
    EXPECT_TRUE(nxStringHelper::SetFromString("1.5", read, ',') == NX_ERR_INVALID_PARAMETER);
    EXPECT_EQ(Held(read), "70@1");
    EXPECT_TRUE(nxStringHelper::SetFromString("1,5", read, ',').IsOK());
    EXPECT_EQ(Held(read), "15@1");
}

// Usual numbers are written a short way, of one word, if there is room: prices, ties at nine places, numbers
// near the end of the short way, and any bits.
TEST(nxUsualNumber, HasTheSameTextTheLongWay)
{
    std::mt19937_64 random(1);
    std::string roomy;
    roomy.reserve(100);
    for (int i = 0; i < 300000; ++i)
    {
        std::uint64_t const bits = random();
        double const kinds[] = {
            static_cast<double>(bits % 10000000) / 100.0, static_cast<double>(bits % 1000000000000) / 1024.0,
            static_cast<double>(99999990 + bits % 20) + static_cast<double>(bits % 3) * 0.4999999997,
            static_cast<double>(bits % 10000000000) / 1e9, std::bit_cast<double>(bits)};
        double const value = std::copysign(kinds[i % 5], std::bit_cast<double>(bits));
        roomy.assign("x");
        nxStringHelper::AppendAsString(roomy, value);
        ASSERT_EQ(roomy, "x" + nxStringHelper::GetAsString(value)) << value;

        auto const places = static_cast<unsigned char>(bits % 10);
        nxDecimal const decimal = Raw(static_cast<long long>(bits) >> (32 + bits % 32), places);
        std::string const text = decimal.GetAsString();
        char buffer[nxDecimal::maximumTextSize];
        buffer[text.size() + 1] = '#';
        decimal.GetAsString(buffer);
        ASSERT_EQ(buffer, text);
        ASSERT_EQ(buffer[text.size() + 1], '#') << "a byte behind the text of " << text;
    }
}

TEST(nxDecimalCost, NumbersAndTheirTextsTakeNoMemoryBeyondTheCallersString)
{
    std::string const texts[] = {"-1234567.89", "-1234567", "1234.5678901234567890123"};
    nxDecimal const step("0.25");
    char buffer[nxDecimal::maximumTextSize];
    nxDecimal decimal;
    int whole = 0;
    double real = 0.0;
    std::string out;
    out.reserve(256);

    nxAllocationCount const count;
    EXPECT_TRUE(decimal.SetFromString(texts[0], '.').IsOK());
    EXPECT_TRUE(nxStringHelper::SetFromString(texts[1], whole).IsOK());
    EXPECT_TRUE(nxStringHelper::SetFromString(texts[2], real, '.').IsOK());
    decimal += decimal;
    decimal = decimal - step * step / step;
    decimal.Round(step, NX_ROUNDING_METHOD_NEAREST);
    EXPECT_TRUE(decimal < step && decimal != step);
    decimal.GetAsString(buffer, '.');
    decimal.AppendAsString(out, '.');
    decimal.AppendAsLogString(out, '.');
    nxStringHelper::AppendAsString(out, whole);
    nxStringHelper::AppendAsString(out, 18446744073709551615ull);
    nxStringHelper::AppendAsString(out, real);
    nxStringHelper::AppendAsString(out, 1e300);
    nxStringHelper::AppendAsString(out, nxRoundingMethodEnum(NX_ROUNDING_METHOD_DOWN));
    EXPECT_EQ(count.Get(), 0u);
    EXPECT_EQ(out, "-2469136.00-2469136.00-1234567184467440737095516151234.5678901231.000000e+300"
                   "NX_ROUNDING_METHOD_DOWN");
}
