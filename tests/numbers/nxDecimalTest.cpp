// What a decimal holds, how it is read, printed, compared, rounded and calculated with, and that all steps are those of
// doubles. Also what numbers and their texts must not cost: memory.
#include "core/numbers/nxDecimal.h"
#include "core/text/nxOStream.h"
#include "core/text/nxSimpleAsciiStringWriter.h"
#include "core/text/nxStringHelper.h"
#include "tests/prices/nxAllocationCount.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>
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

/// The conversion told in floor() and ceil(), for numbers in range.
long long FromDouble(double value, unsigned char places)
{
    auto const power = static_cast<long long>(std::llround(std::pow(10.0, places)));
    auto const whole = static_cast<long long>(value);
    double const fraction = (value - static_cast<double>(whole)) * static_cast<double>(power);
    double const floor = std::floor(fraction);
    return static_cast<long long>(fraction - floor >= 0.5 ? std::ceil(fraction) : floor) + whole * power;
}

} // namespace

TEST(nxDecimalState, Construction)
{
    EXPECT_EQ(Held(nxDecimal()), "0@0");
    EXPECT_EQ(Held(nxDecimal(5, 2)), "500@2");
    EXPECT_EQ(Held(nxDecimal(-5ll, 0)), "-5@0");
    EXPECT_EQ(Held(nxDecimal(1, 64)), "0@64"); // 10^64 wraps to 0
    EXPECT_EQ(Held(nxDecimal(0.1 + 0.2, 2)), "30@2");
    EXPECT_EQ(Held(nxDecimal(1, 320, 7)), "31250@7");
    EXPECT_EQ(Held(nxDecimal(1, 0, 1)), "-9223372036854775808@1");
    EXPECT_EQ(Held(nxDecimal("-1.50")), "-150@2");
    EXPECT_EQ(Held(nxDecimal("abc", '.')), "NULL");
    EXPECT_EQ(Held(nxDecimal(nxNullInitalizer{})), "NULL");
    EXPECT_EQ(Held(nxDecimal(nxNoChangeInitalizer{})), "NOCHANGE");

    nxDecimal decimal("1.5");
    decimal.SetNull();
    EXPECT_EQ(Held(decimal), "NULL");
    EXPECT_FALSE(decimal.IsZero() || decimal.IsPositive() || decimal.IsNegative());
    decimal = nxDecimal("-1.5");
    EXPECT_TRUE(decimal.IsNegative() && !decimal.IsZero());
    decimal.SetNoChange();
    decimal.SetDecimalPlaces(3, false);
    decimal.InvertSign();
    EXPECT_EQ(Held(decimal), "NOCHANGE");
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
    for (auto const& [decimal, encoded, encodedPlaces] :
         {std::tuple(nxDecimal::GetNullDecimal(), 0x7FFFFFFFFFFFFFFF, 0),
          {nxDecimal::GetNoChangeDecimal(), 0x7FFFFFFFFFFFFFFE, 0},
          {Raw(-5, 3), -5, 3}})
    {
        long long value = 7;
        unsigned char places = 7;
        decimal.GetAsEncodedValues(value, places);
        EXPECT_EQ(value, encoded);
        EXPECT_EQ(places, encodedPlaces);
        nxDecimal back;
        back.SetFromEncodedValues(encoded, decimal.IsValid() ? places : 9); // of a mark they don't matter
        EXPECT_EQ(Held(back), Held(decimal));
    }
}

TEST(nxDecimalState, SignAndScale)
{
    nxDecimal decimal("1.5");
    EXPECT_EQ(&-decimal, &decimal); // changes the object
    EXPECT_EQ(Held(decimal), "-15@1");
    EXPECT_EQ(Held(nxDecimal::Abs(decimal)), "15@1");
    EXPECT_EQ(Held(nxDecimal::Abs(Raw(smallest, 0))), "-9223372036854775808@0"); // wraps

    using Row = std::tuple<nxDecimal, unsigned char, bool, char const*>;
    for (auto const& [before, places, onlyDropZeros, after] :
         {Row{Raw(129, 2), 1, false, "12@1"}, Row{Raw(-129, 2), 0, false, "-1@0"},
          Row{Raw(129, 2), 4, false, "12900@4"}, Row{Raw(129, 2), 2, true, "129@2"},
          Row{Raw(120, 2), 0, true, "12@1"}, Row{Raw(100, 2), 0, true, "1@0"},
          Row{Raw(1000, 3), 1, true, "10@1"}, Row{Raw(129, 2), 3, true, "1290@3"},
          Row{Raw(0, 3), 1, false, "0@1"}, Row{Raw(smallest, 19), 0, false, "0@0"},
          Row{Raw(smallest, 18), 0, false, "-9@0"}, Row{Raw(3, 0), 255, false, "0@255"}})
    {
        nxDecimal scaled = before;
        scaled.SetDecimalPlaces(places, onlyDropZeros);
        EXPECT_EQ(Held(scaled), after) << Held(before);
    }
    decimal = nxDecimal("1.2300");
    decimal.Normalise(1);
    EXPECT_EQ(Held(decimal), "123@2");
    decimal = nxDecimal("1.0000");
    decimal.Normalise(1);
    EXPECT_EQ(Held(decimal), "10@1");
}

TEST(nxDecimalArithmetic, Results)
{
    using Row = std::tuple<char const*, char, char const*, char const*>;
    Row const rows[] = {
        {"1.25", '+', "0.75", "2.00"},
        {"1.5", '+', "0.125", "1.625"},
        {"1", '-', "1.5", "-0.5"},
        {"9223372036854775807", '+', "1", "-9223372036854775808"},
        {"-9223372036854775808", '-', "1", "9223372036854775807"},
        {"1.5", '*', "1.5", "2.3"},
        {"-1.5", '*', "1.5", "-2.2"}, // half up on the number line
        {"3037000500", '*', "3037000500", "-9223372036709301616"},
        {"7", '/', "2", "4"},
        {"-7", '/', "2", "-3"},
        {"1", '/', "3", "0"},
        {"1.00", '/', "3", "0.33"},
        {"5", '/', "0", "0"},
        {"0", '/', "0", "0"},
        {"5.0", '/', "0", "-922337203685477580.8"},
        {"5", '/', "0.00", "-92233720368547758.08"},
        {"NULL", '+', "5", "NULL"}, // what is not valid stays on the left and is ignored on the right
        {"NOCHANGE", '*', "5", "NOCHANGE"},
        {"5.0", '+', "NULL", "5.0"},
        {"5.0", '-', "NOCHANGE", "5.0"},
        {"5.0", '*', "NULL", "5.0"},
        {"5.0", '/', "NULL", "5.0"}};
    for (auto const& [leftText, operation, rightText, expected] : rows)
    {
        nxDecimal const left = Make(leftText);
        nxDecimal const right = Make(rightText);
        nxDecimal result;
        nxDecimal assigned(left);
        switch (operation)
        {
        case '+': result = left + right, assigned += right; break;
        case '-': result = left - right, assigned -= right; break;
        case '*': result = left * right, assigned *= right; break;
        default: result = left / right, assigned /= right; break;
        }
        EXPECT_EQ(Held(result), Held(Make(expected))) << leftText << operation << rightText;
        EXPECT_EQ(Held(assigned), Held(result));
    }
    nxDecimal self("1.5");
    self += self;
    self *= self;
    EXPECT_EQ(Held(self), "90@1");
}

TEST(nxDecimalArithmetic, Doubles)
{
    double const infinity = std::numeric_limits<double>::infinity();
    // Whole part and decimals are -2^63 each, by definition; times a power of ten the one wraps to 0, and with no
    // places the two add up to 0.
    for (double const value : {infinity, -infinity, std::nan(""), 1e300, -1e300})
        EXPECT_EQ(Held(nxDecimal(value, 1)), "-9223372036854775808@1");
    EXPECT_EQ(Held(nxDecimal(infinity, 0)), "0@0");
    EXPECT_EQ(Held(nxDecimal(-9223372036854775808.0, 0)), "-9223372036854775808@0");
    EXPECT_EQ(Held(nxDecimal(9223372036854775808.0, 0)), "0@0");

    std::mt19937_64 random(3);
    std::uniform_real_distribution<double> small(-1000.0, 1000.0);
    for (int i = 0; i < 200000; ++i)
    {
        auto const places = static_cast<unsigned char>(random() % 12);
        // Every other value is near a tie of its places.
        double const value = i % 2 == 0
                                 ? small(random)
                                 : (static_cast<double>(random() % 20000) - 9999.5) / std::pow(10.0, places);
        ASSERT_EQ(nxDecimal(value, places).GetValue(), FromDouble(value, places))
            << value << ' ' << int{places};
    }
}

TEST(nxDecimalComparison, OneOrderOverAllStates)
{
    // Rising, equal ones in one group.
    std::vector<std::vector<std::string>> const groups = {
        {"NULL"},           {"NOCHANGE"},   {"-1000000", "-1000000.00"},
        {"-0.5", "-0.500"}, {"0", "0.000"}, {"1.0", "1.00", "1.0"},
        {"1.1", "1.100"}};
    for (std::size_t i = 0; i < groups.size() * groups.size(); ++i)
    {
        std::size_t const left = i / groups.size();
        std::size_t const right = i % groups.size();
        for (std::string const& leftText : groups[left])
        {
            for (std::string const& rightText : groups[right])
            {
                nxDecimal const a = Make(leftText);
                nxDecimal const b = Make(rightText);
                EXPECT_TRUE((a == b) == (left == right) && (a != b) == (left != right));
                EXPECT_TRUE((a < b) == (left < right) && (a <= b) == (left <= right));
                EXPECT_TRUE((a > b) == (left > right) && (a >= b) == (left >= right));
            }
        }
    }
    // The tolerance is absolute, and holds across scales only.
    EXPECT_TRUE(nxDecimal("1.0000000000000001") == nxDecimal("1.0"));
    EXPECT_FALSE(nxDecimal("1.0000000000000001") == nxDecimal("1.0000000000000000"));
    EXPECT_FALSE(nxDecimal("0.0000000000000001") < nxDecimal("0.00000000000000019"));
    EXPECT_TRUE(nxDecimal("0.0000000000000001") == nxDecimal("0.00000000000000019"));
}

TEST(nxDecimalComparison, MinimumAndMaximumPreferTheValid)
{
    using Row = std::tuple<char const*, char const*, char const*, char const*>;
    for (auto const& [a, b, minimum, maximum] :
         {Row{"NULL", "5", "5@0", "5@0"}, Row{"5", "NULL", "5@0", "5@0"}, Row{"5.0", "5", "50@1", "50@1"},
          Row{"5", "4.9", "49@1", "5@0"}, Row{"4.9", "5", "49@1", "5@0"},
          Row{"NULL", "NOCHANGE", "NOCHANGE", "NOCHANGE"}, Row{"NOCHANGE", "NULL", "NULL", "NULL"}})
    {
        EXPECT_EQ(Held(nxDecimal::GetMin(Make(a), Make(b))), minimum) << a << ' ' << b;
        EXPECT_EQ(Held(nxDecimal::GetMax(Make(a), Make(b))), maximum) << a << ' ' << b;
    }
}

TEST(nxDecimalRound, GivesAMultipleOfTheStep)
{
    // The value and its step; then rounded down, up, to the nearest and to the modified nearest.
    using Row = std::tuple<char const*, char const*, char const*, char const*, char const*, char const*>;
    Row const rows[] = {{"1.25", "0.1", "1.2", "1.3", "1.3", "1.2"},
                        {"-1.25", "0.1", "-1.3", "-1.2", "-1.3",
                         "-1.2"}, // down is toward minus infinity, a tie away from zero
                        {"1.26", "0.1", "1.2", "1.3", "1.3", "1.3"},
                        {"1.24", "0.1", "1.2", "1.3", "1.2", "1.2"},
                        {"3.00", "0.25", "3.00", "3.00", "3.00", "3.00"},
                        {"-3.00", "0.25", "-3.00", "-3.00", "-3.00", "-3.00"},
                        {"-0.04", "0.1", "-0.1", "0.0", "0.0", "0.0"}, // never a negative zero
                        {"7", "2", "6", "8", "8", "6"},
                        {"-7", "2", "-8", "-6", "-8", "-6"},
                        {"7", "-2", "6", "4", "4", "4"}, // a negative step is taken as it is
                        {"25.37", "5", "25", "30", "25", "25"},
                        {"0.00", "0.05", "0.00", "0.00", "0.00", "0.00"},
                        {"101.03125", "0.015625", "101.031250", "101.031250", "101.031250", "101.031250"},
                        // The quotient is rounded at the larger of the places before it is cut.
                        {"9.9", "10.0", "10.0", "20.0", "10.0", "10.0"},
                        {"9.90", "10.00", "0.00", "10.00", "10.00", "10.00"},
                        // Left alone: no step, and no value.
                        {"1.25", "0.0", "1.25", "1.25", "1.25", "1.25"},
                        {"1.25", "NULL", "1.25", "1.25", "1.25", "1.25"},
                        {"NULL", "1", "NULL", "NULL", "NULL", "NULL"}};
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
    nxDecimal itself("1.25");
    itself.Round(itself, NX_ROUNDING_METHOD_UP);
    EXPECT_EQ(Held(itself), "125@2");
}

TEST(nxDecimalText, Parsing)
{
    using namespace std::string_literals;
    std::pair<std::string, char const*> const rows[] = {
        {"1.50", "150@2"},
        {"5.", "5@0"},
        {".5", "5@1"},
        {"+007", "7@0"},
        {"-0.0", "0@1"},
        {"-9223372036854775808", "-9223372036854775808@0"},
        {"18446744073709551617", "1@0"}, // wraps
        {"1.2\0x"s, "12@1"},
        {"0." + std::string(256, '0'), "0@0"}, // so do the places
        {"0." + std::string(300, '0') + "1", "1@45"}};
    for (auto const& [text, held] : rows)
    {
        nxDecimal decimal;
        EXPECT_TRUE(decimal.SetFromString(text, '.').IsOK()) << text;
        EXPECT_EQ(Held(decimal), held) << text;
    }
    nxDecimal decimal("7.0");
    for (char const* text :
         {"", "+", "-", ".", "-.", "1.5.2", "+-1", "1-", " 1", "1 ", "1e3", "1,5", "abc", "\xB1"})
    {
        EXPECT_TRUE(decimal.SetFromString(text, '.') == NX_ERR_INVALID_PARAMETER) << text;
        EXPECT_EQ(Held(decimal), "70@1") << text;
    }
    EXPECT_TRUE(nxStringHelper::SetFromString("1,5", decimal, ',').IsOK());
    EXPECT_EQ(Held(decimal), "15@1");
}

TEST(nxDecimalText, PlainAndTrimmed)
{
    using Row = std::tuple<nxDecimal, unsigned char, char const*>;
    for (auto const& [decimal, maximumPlaces, text] :
         {Row{Raw(150, 2), 9, "1.50"}, Row{Raw(0, 2), 9, "0.00"}, Row{Raw(-5, 1), 9, "-0.5"},
          Row{Raw(5, 0), 9, "5"}, Row{Raw(1239, 3), 2, "1.23"}, Row{Raw(1239, 3), 0, "1"},
          Row{Raw(-1, 3), 2, "-0.00"}, Row{Raw(-1, 3), 0, "-0"}, // the sign of the whole number
          Row{Raw(12345678901234567, 16), 12, "1.234567890123"},
          Row{Raw(12345678901234567, 16), 255, "1.234567890123"},
          Row{Raw(smallest, 0), 9, "-9223372036854775808"},
          Row{Raw(smallest, 7), 12, "-922337203685.4775808"}, Row{Raw(smallest, 19), 12, "-0.922337203685"},
          Row{Raw(smallest, 20), 12, "-1.014570924054"}, // 10^20 wraps
          Row{Raw(smallest, 64), 12, "-0.000000000000"}, Row{Raw(7, 25), 12, "0.000000000000"},
          Row{Raw(7, 255), 0, "0"}, Row{Make("NULL"), 9, ""}, Row{Make("NOCHANGE"), 9, ""}})
        EXPECT_EQ(decimal.GetAsTrimmedString(maximumPlaces, '.'), text);

    EXPECT_EQ(Written(nxDecimal("-0.5")), "-0.5"); // the stream shows all places
    EXPECT_EQ(Written(nxDecimal("-12.050")), "-12.050");
    EXPECT_EQ(Written(nxDecimal("1.2345678901234567")), "1.2345678901234567");
    EXPECT_EQ(Written(nxDecimal::GetNullDecimal()), "");
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
    EXPECT_EQ(nxDecimal::GetNoChangeDecimal().GetAsLogString(), "NO_CHANGE");
    EXPECT_EQ(decimal.GetAsTrimmedLogString(1), "-12.5");
    EXPECT_EQ(nxDecimal::GetNullDecimal().GetAsTrimmedLogString(1), "NULL");

    // Never more than the promised bytes, the zero byte among them.
    char buffer[nxDecimal::maximumTextSize + 1];
    for (int places = 0; places < 256; ++places)
    {
        std::memset(buffer, '#', sizeof(buffer));
        Raw(smallest, static_cast<unsigned char>(places)).GetAsString(buffer);
        EXPECT_LT(std::strlen(buffer), nxDecimal::maximumTextSize);
        EXPECT_EQ(buffer[nxDecimal::maximumTextSize], '#');
    }
    nxDecimal::GetNoChangeDecimal().GetAsString(buffer);
    EXPECT_STREQ(buffer, "");
    nxDecimal::GetNoChangeDecimal().GetAsLogString(buffer);
    EXPECT_STREQ(buffer, "NO_CHANGE");

    std::mt19937_64 random(4);
    for (int i = 0; i < 100000; ++i)
    {
        nxDecimal const any = Raw(static_cast<long long>(random()) >> (random() % 64),
                                  static_cast<unsigned char>(random() % 13));
        ASSERT_EQ(Held(nxDecimal(any.GetAsString())), Held(any));
    }
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
