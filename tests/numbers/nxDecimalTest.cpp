// What a decimal holds, how it is read, printed, compared, rounded and calculated with, and that all steps are those of
// doubles. Also what numbers and their texts must not cost: memory.
#include "core/numbers/nxDecimal.h"
#include "core/text/nxOStream.h"
#include "core/text/nxSimpleAsciiStringWriter.h"
#include "core/text/nxStringHelper.h"
#include "tests/prices/nxAllocationCount.h"

#include <gtest/gtest.h>

#include <limits>
#include <tuple>

static_assert(std::is_trivially_destructible_v<nxDecimal>);
static_assert(std::is_convertible_v<nxNullInitalizer, nxDecimal>);
static_assert(!std::is_convertible_v<std::string, nxDecimal>);

namespace
{

constexpr long long smallest = std::numeric_limits<long long>::min();
constexpr auto Raw = nxDecimal::ConstructFromValueAndDecimalPlaces;

/// "NULL", "NOCHANGE" or a number.
nxDecimal Make(std::string const& text)
{
    return text == "NULL"       ? nxDecimal::GetNullDecimal()
           : text == "NOCHANGE" ? nxDecimal::GetNoChangeDecimal()
                                : nxDecimal(text, '.');
}

/// Value and places as "500@2"; for what is not valid, and so must be cleared, the status.
std::string Held(nxDecimal const& decimal)
{
    std::string const number =
        std::to_string(decimal.GetValue()) + '@' + std::to_string(decimal.GetDecimalPlaces());
    return number == "0@0" && !decimal.IsValid() ? decimal.GetStatus().GetAsString() : number;
}

std::string Written(nxDecimal const& decimal)
{
    nxOStream<nxSimpleAsciiStringWriter> stream;
    stream.Write("x", 1);
    decimal.Write(stream, '.');
    return stream.GetAsString().substr(1);
}

std::string Rounded(std::string const& value, std::string const& step, nxEnumValue method)
{
    nxDecimal decimal = Make(value);
    decimal.Round(Make(step), nxRoundingMethodEnum(method));
    return decimal.GetAsLogString();
}

} // namespace

TEST(nxDecimalState, Construction)
{
    EXPECT_EQ(Held(nxDecimal(5, 2)), "500@2");
    EXPECT_EQ(Held(nxDecimal(1, 64)), "0@64"); // 10^64 wraps to 0
    EXPECT_EQ(Held(nxDecimal(0.1 + 0.2, 2)), "30@2");
    EXPECT_EQ(Held(nxDecimal(1, 320, 7)), "31250@7");
    EXPECT_EQ(Held(nxDecimal(1, 0, 1)), "-9223372036854775808@1");
    EXPECT_EQ(Held(nxDecimal("abc", '.')), "NULL");
    EXPECT_EQ(Held(nxDecimal(nxNullInitalizer{})), "NULL");
    nxDecimal decimal(nxNoChangeInitalizer{});
    decimal.SetDecimalPlaces(3, false);
    decimal.InvertSign();
    EXPECT_EQ(Held(decimal), "NOCHANGE");
    decimal.SetNull();
    EXPECT_FALSE(decimal.IsZero() || decimal.IsPositive() || decimal.IsNegative());
}

TEST(nxDecimalState, PartsAndEncodedForm)
{
    using Row = std::tuple<nxDecimal, long long, unsigned long long>;
    for (auto const& [decimal, whole, fraction] :
         {Row{nxDecimal("-1.25"), -1, 25}, Row{nxDecimal("-0.05"), 0, 5}, Row{Raw(smallest, 0), smallest, 0},
          Row{Raw(smallest, 19), 0, 9223372036854775808u},
          Row{Raw(7, 64), 0, 7}}) // no division by the power that has become 0
    {
        EXPECT_EQ(decimal.GetIntegerPart(), whole);
        EXPECT_EQ(decimal.GetFractionalPart(), fraction);
    }
    long long value = 7;
    unsigned char places = 7;
    nxDecimal::GetNoChangeDecimal().GetAsEncodedValues(value, places);
    EXPECT_EQ(value, 0x7FFFFFFFFFFFFFFE);
    EXPECT_EQ(places, 0);
}

TEST(nxDecimalState, ChangesItself)
{
    nxDecimal decimal("1.5");
    EXPECT_EQ(&-decimal, &decimal);
    EXPECT_EQ(Held(decimal), "-15@1");
    EXPECT_EQ(Held(nxDecimal::Abs(decimal)), "15@1");
    decimal += decimal;
    decimal *= decimal;
    decimal.Round(decimal, NX_ROUNDING_METHOD_UP);
    EXPECT_EQ(Held(decimal), "90@1");
}

TEST(nxDecimalRound, GivesAMultipleOfTheStep)
{
    using Row = std::tuple<char const*, char const*, char const*, char const*, char const*, char const*>;
    Row const rows[] = {
#include "tests/numbers/rounding.def"
    };
    for (auto const& [value, step, down, up, nearest, modifiedNearest] : rows)
    {
        SCOPED_TRACE(std::string(value) + " by " + step);
        EXPECT_EQ(Rounded(value, step, NX_ROUNDING_METHOD_DOWN), down);
        EXPECT_EQ(Rounded(value, step, NX_ROUNDING_METHOD_UP), up);
        EXPECT_EQ(Rounded(value, step, NX_ROUNDING_METHOD_NEAREST), nearest);
        EXPECT_EQ(Rounded(value, step, NX_UNDEFINED), nearest);
        EXPECT_EQ(Rounded(value, step, NX_ROUNDING_METHOD_MODIFIED_NEAREST), modifiedNearest);
    }
    EXPECT_EQ(Rounded("-9223372036854775808", "-1", NX_ROUNDING_METHOD_DOWN),
              "-9223372036854775808"); // wraps
}

TEST(nxDecimalText, PlainAndTrimmed)
{
    using Row = std::tuple<nxDecimal, unsigned char, char const*>;
    for (auto const& [decimal, maximumPlaces, text] :
         {Row{Raw(-1, 3), 0, "-0"}, // the sign of the whole number
          Row{Raw(12345678901234567, 16), 255, "1.234567890123"},
          Row{Raw(smallest, 20), 12, "-1.014570924054"}, // 10^20 wraps
          Row{Raw(smallest, 64), 12, "-0.000000000000"}, Row{Raw(7, 25), 12, "0.000000000000"},
          Row{Raw(7, 255), 0, "0"}, Row{Make("NULL"), 9, ""}, Row{Make("NOCHANGE"), 9, ""}})
        EXPECT_EQ(decimal.GetAsTrimmedString(maximumPlaces, '.'), text);

    EXPECT_EQ(Written(nxDecimal("1.2345678901234567")), "1.2345678901234567"); // the stream shows all places
    EXPECT_EQ(Written(Raw(5, 62)), "0." + std::string(61, '0') + "5");
    EXPECT_EQ(Written(Raw(-5, 63)), "-0"); // does not fit the scratch buffer
}

TEST(nxDecimalText, AllForms)
{
    nxDecimal const decimal("-12.50");
    std::string text("old");
    decimal.GetAsString(text, ',');
    EXPECT_EQ(text, "-12,50");
    decimal.AppendAsString(text);
    EXPECT_EQ(text, "-12,50-12.50");
    decimal.GetAsLogString(text);
    nxDecimal::GetNullDecimal().AppendAsLogString(text);
    EXPECT_EQ(text, "-12.50NULL");
    EXPECT_EQ(nxStringHelper::GetAsString(decimal), "-12.50");
    nxDecimal read("7.0");
    EXPECT_TRUE(nxStringHelper::SetFromString("1.5", read, ',') == NX_ERR_INVALID_PARAMETER);
    EXPECT_EQ(Held(read), "70@1");
    EXPECT_TRUE(nxStringHelper::SetFromString("1,5", read, ',').IsOK());
    EXPECT_EQ(Held(read), "15@1");
    EXPECT_EQ(nxDecimal::GetNoChangeDecimal().GetAsLogString(), "NO_CHANGE");
    EXPECT_EQ(decimal.GetAsTrimmedLogString(1), "-12.5");
    EXPECT_EQ(nxDecimal::GetNullDecimal().GetAsTrimmedLogString(1), "NULL");

    char buffer[nxDecimal::maximumTextSize];
    nxDecimal::GetNoChangeDecimal().GetAsString(buffer);
    EXPECT_STREQ(buffer, "");
    nxDecimal::GetNoChangeDecimal().GetAsLogString(buffer);
    EXPECT_STREQ(buffer, "NO_CHANGE");
}

TEST(nxDecimalCost, NoMemory)
{
    std::string const text("-1234567.89");
    nxDecimal const step("0.25");
    char buffer[nxDecimal::maximumTextSize];
    std::string out;
    out.reserve(256);

    nxAllocationCount const count;
    nxDecimal decimal;
    EXPECT_TRUE(decimal.SetFromString(text, '.').IsOK());
    decimal += decimal;
    decimal = decimal - step * step / step;
    decimal.Round(step, NX_ROUNDING_METHOD_NEAREST);
    EXPECT_TRUE(decimal < step && decimal != step);
    decimal.GetAsString(buffer, '.');
    decimal.AppendAsString(out, '.');
    decimal.AppendAsLogString(out, '.');
    EXPECT_EQ(count.Get(), 0u);
    EXPECT_EQ(out, "-2469136.00-2469136.00");
}

TEST(nxStringHelperCost, NoMemoryBeyondTheCallersString)
{
    std::string const wholeText("-1234567");
    std::string const realText("1234.5678901234567890123");
    std::string out;
    out.reserve(256);

    nxAllocationCount const count;
    int whole = 0;
    double real = 0.0;
    EXPECT_TRUE(nxStringHelper::SetFromString(wholeText, whole).IsOK());
    EXPECT_TRUE(nxStringHelper::SetFromString(realText, real, '.').IsOK());
    nxStringHelper::AppendAsString(out, whole);
    nxStringHelper::AppendAsString(out, 18446744073709551615ull);
    nxStringHelper::AppendAsString(out, real);
    nxStringHelper::AppendAsString(out, 1e300);
    nxStringHelper::AppendAsString(out, nxRoundingMethodEnum(NX_ROUNDING_METHOD_DOWN));
    EXPECT_EQ(count.Get(), 0u);
    EXPECT_EQ(out, "-1234567184467440737095516151234.5678901231.000000e+300NX_ROUNDING_METHOD_DOWN");
}
