// What a decimal holds, how it is read, printed, compared and calculated with, and that all steps are those of doubles.
#include "core/numbers/nxDecimal.h"
#include "core/text/nxOStream.h"
#include "core/text/nxSimpleAsciiStringWriter.h"
#include "core/text/nxStringHelper.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>

static_assert(std::is_trivially_destructible_v<nxDecimal>);
static_assert(std::is_convertible_v<nxNullInitalizer, nxDecimal>);
static_assert(!std::is_convertible_v<std::string, nxDecimal>);

namespace
{

constexpr long long smallest = std::numeric_limits<long long>::min();

nxDecimal Raw(long long value, unsigned char places)
{
    return nxDecimal::ConstructFromValueAndDecimalPlaces(value, places);
}

/// "null", "no change" or a number.
nxDecimal Make(std::string const& text)
{
    return text == "null"        ? nxDecimal::GetNullDecimal()
           : text == "no change" ? nxDecimal::GetNoChangeDecimal()
                                 : nxDecimal(text, '.');
}

void ExpectRaw(nxDecimal const& decimal, long long value, unsigned char places)
{
    EXPECT_TRUE(decimal.IsValid());
    EXPECT_EQ(decimal.GetValue(), value);
    EXPECT_EQ(decimal.GetDecimalPlaces(), places);
}

void ExpectCleared(nxDecimal const& decimal, nxEnumValue status)
{
    EXPECT_TRUE(decimal.GetStatus() == status);
    EXPECT_EQ(decimal.GetValue(), 0);
    EXPECT_EQ(decimal.GetDecimalPlaces(), 0);
}

std::string Written(nxDecimal const& decimal)
{
    nxOStream<nxSimpleAsciiStringWriter> stream;
    stream.Write("x", 1);
    decimal.Write(stream, '.');
    return stream.GetAsString().substr(1);
}

/// The conversion told in floor() and ceil(), for numbers in range.
long long FromDouble(double value, unsigned char places)
{
    auto const power = static_cast<long long>(std::llround(std::pow(10.0, places)));
    auto const whole = static_cast<long long>(value);
    double const fraction = (value - static_cast<double>(whole)) * static_cast<double>(power);
    double rounded = std::floor(fraction);
    if (fraction - rounded >= 0.5)
        rounded = std::ceil(fraction);
    return static_cast<long long>(rounded) + whole * power;
}

} // namespace

TEST(nxDecimalState, Construction)
{
    ExpectRaw(nxDecimal(), 0, 0);
    ExpectRaw(nxDecimal(5, 2), 500, 2);
    ExpectRaw(nxDecimal(-5ll, 0), -5, 0);
    ExpectRaw(nxDecimal(1, 64), 0, 64); // 10^64 wraps to 0
    ExpectRaw(nxDecimal(0.1 + 0.2, 2), 30, 2);
    ExpectRaw(nxDecimal(1, 320, 7), 31250, 7);
    ExpectRaw(nxDecimal(1, 0, 1), smallest, 1);
    ExpectRaw(nxDecimal("-1.50"), -150, 2);
    ExpectCleared(nxDecimal("abc", '.'), NX_NULL);
    ExpectCleared(nxDecimal(nxNullInitalizer{}), NX_NULL);
    ExpectCleared(nxDecimal(nxNoChangeInitalizer{}), NX_NOCHANGE);
}

TEST(nxDecimalState, SettingNullClears)
{
    nxDecimal decimal("1.5");
    decimal.SetNull();
    ExpectCleared(decimal, NX_NULL);
    EXPECT_FALSE(decimal.IsZero() || decimal.IsPositive() || decimal.IsNegative());
    decimal = nxDecimal("-1.5");
    EXPECT_TRUE(decimal.IsNegative() && !decimal.IsZero());
    decimal.SetNoChange();
    ExpectCleared(decimal, NX_NOCHANGE);
    decimal.SetDecimalPlaces(3, false);
    decimal.InvertSign();
    ExpectCleared(decimal, NX_NOCHANGE);
}

TEST(nxDecimalState, Parts)
{
    EXPECT_EQ(nxDecimal("-1.25").GetIntegerPart(), -1);
    EXPECT_EQ(nxDecimal("-1.25").GetFractionalPart(), 25u);
    EXPECT_EQ(nxDecimal("-0.05").GetIntegerPart(), 0);
    EXPECT_EQ(Raw(smallest, 0).GetIntegerPart(), smallest);
    EXPECT_EQ(Raw(smallest, 19).GetFractionalPart(), 9223372036854775808u);
    EXPECT_EQ(Raw(7, 64).GetIntegerPart(), 0); // no division by the power that has become 0
    EXPECT_EQ(Raw(7, 64).GetFractionalPart(), 7u);
}

TEST(nxDecimalState, EncodedForm)
{
    long long value = 7;
    unsigned char places = 7;
    nxDecimal::GetNullDecimal().GetAsEncodedValues(value, places);
    EXPECT_EQ(value, 0x7FFFFFFFFFFFFFFF);
    EXPECT_EQ(places, 0);
    nxDecimal decimal;
    decimal.SetFromEncodedValues(value, 9);
    ExpectCleared(decimal, NX_NULL);
    decimal.SetFromEncodedValues(0x7FFFFFFFFFFFFFFE, 9);
    ExpectCleared(decimal, NX_NOCHANGE);
    decimal.GetAsEncodedValues(value, places);
    EXPECT_EQ(value, 0x7FFFFFFFFFFFFFFE);
    decimal.SetFromEncodedValues(-5, 3);
    ExpectRaw(decimal, -5, 3);
    decimal.GetAsEncodedValues(value, places);
    EXPECT_EQ(value, -5);
    EXPECT_EQ(places, 3);
}

TEST(nxDecimalState, SignAndScale)
{
    nxDecimal decimal("1.5");
    EXPECT_EQ(&-decimal, &decimal); // changes the object
    ExpectRaw(decimal, -15, 1);
    ExpectRaw(nxDecimal::Abs(decimal), 15, 1);
    nxDecimal lowest = Raw(smallest, 0);
    lowest.Abs();
    ExpectRaw(lowest, smallest, 0); // wraps

    struct Row
    {
        char const* text;
        unsigned char places;
        bool onlyDropZeros;
        char const* result;
    };
    Row const rows[] = {
        {"1.29", 1, false, "1.2"}, {"-1.29", 0, false, "-1"},  {"1.29", 4, false, "1.2900"},
        {"1.29", 2, true, "1.29"}, {"1.20", 0, true, "1.2"},   {"1.00", 0, true, "1"},
        {"1.000", 1, true, "1.0"}, {"1.29", 3, true, "1.290"}, {"0.000", 1, false, "0.0"},
    };
    for (Row const& row : rows)
    {
        nxDecimal scaled(row.text);
        scaled.SetDecimalPlaces(row.places, row.onlyDropZeros);
        EXPECT_EQ(scaled.GetAsString(), row.result) << row.text;
    }
    nxDecimal scaled = Raw(smallest, 19);
    scaled.SetDecimalPlaces(0, false);
    ExpectRaw(scaled, 0, 0);
    scaled = Raw(smallest, 18);
    scaled.SetDecimalPlaces(0, false);
    ExpectRaw(scaled, -9, 0);
    scaled = Raw(3, 0);
    scaled.SetDecimalPlaces(255, false);
    ExpectRaw(scaled, 0, 255);
    scaled = nxDecimal("1.2300");
    scaled.Normalise(1);
    ExpectRaw(scaled, 123, 2);
    scaled = nxDecimal("1.0000");
    scaled.Normalise(1);
    ExpectRaw(scaled, 10, 1);
}

TEST(nxDecimalArithmetic, Results)
{
    struct Row
    {
        char const* left;
        char operation;
        char const* right;
        char const* result;
    };
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
        // What is not valid is ignored on the right and stays on the left.
        {"null", '+', "5", "null"},
        {"no change", '*', "5", "no change"},
        {"5.0", '+', "null", "5.0"},
        {"5.0", '-', "no change", "5.0"},
        {"5.0", '*', "null", "5.0"},
        {"5.0", '/', "null", "5.0"},
    };
    for (Row const& row : rows)
    {
        nxDecimal const left = Make(row.left);
        nxDecimal const right = Make(row.right);
        nxDecimal result;
        nxDecimal assigned(left);
        switch (row.operation)
        {
        case '+':
            result = left + right;
            assigned += right;
            break;
        case '-':
            result = left - right;
            assigned -= right;
            break;
        case '*':
            result = left * right;
            assigned *= right;
            break;
        default:
            result = left / right;
            assigned /= right;
            break;
        }
        EXPECT_EQ(result.GetAsLogString(), Make(row.result).GetAsLogString())
            << row.left << row.operation << row.right;
        EXPECT_TRUE(result.GetStatus() == Make(row.result).GetStatus());
        EXPECT_EQ(assigned.GetAsLogString(), result.GetAsLogString());
    }
    nxDecimal self("1.5");
    self += self;
    self *= self;
    ExpectRaw(self, 90, 1);
}

TEST(nxDecimalArithmetic, DoublesOutOfRange)
{
    double const infinity = std::numeric_limits<double>::infinity();
    // Whole part and decimals are -2^63 each, by definition; times a power of ten the one wraps to 0, and with no
    // places the two add up to 0.
    for (double const value : {infinity, -infinity, std::nan(""), 1e300, -1e300})
        ExpectRaw(nxDecimal(value, 1), smallest, 1);
    ExpectRaw(nxDecimal(infinity, 0), 0, 0);
    ExpectRaw(nxDecimal(-9223372036854775808.0, 0), smallest, 0);
    ExpectRaw(nxDecimal(9223372036854775808.0, 0), 0, 0);
}

TEST(nxDecimalArithmetic, ConversionIsThatOfFloorAndCeil)
{
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
    std::vector<std::vector<nxDecimal>> const groups = {
        {nxDecimal::GetNullDecimal()},
        {nxDecimal::GetNoChangeDecimal()},
        {nxDecimal(-1000000, 0), nxDecimal("-1000000.00")},
        {nxDecimal("-0.5"), nxDecimal("-0.500")},
        {nxDecimal(), nxDecimal("0.000")},
        {nxDecimal("1.0"), nxDecimal("1.00"), nxDecimal("1.0")},
        {nxDecimal("1.1"), nxDecimal("1.100")},
    };
    for (std::size_t i = 0; i < groups.size(); ++i)
    {
        for (std::size_t j = 0; j < groups.size(); ++j)
        {
            for (nxDecimal const& a : groups[i])
            {
                for (nxDecimal const& b : groups[j])
                {
                    EXPECT_EQ(a == b, i == j);
                    EXPECT_EQ(a != b, i != j);
                    EXPECT_EQ(a < b, i < j);
                    EXPECT_EQ(a <= b, i <= j);
                    EXPECT_EQ(a > b, i > j);
                    EXPECT_EQ(a >= b, i >= j);
                }
            }
        }
    }
}

TEST(nxDecimalComparison, ToleranceHoldsAcrossScalesOnly)
{
    EXPECT_TRUE(nxDecimal("1.0000000000000001") == nxDecimal("1.0"));
    EXPECT_FALSE(nxDecimal("1.0000000000000001") == nxDecimal("1.0000000000000000"));
    EXPECT_FALSE(nxDecimal("0.0000000000000001") <
                 nxDecimal("0.00000000000000019")); // the tolerance is absolute
    EXPECT_TRUE(nxDecimal("0.0000000000000001") == nxDecimal("0.00000000000000019"));
}

TEST(nxDecimalComparison, MinimumAndMaximumPreferTheValid)
{
    nxDecimal const null = nxDecimal::GetNullDecimal();
    nxDecimal const noChange = nxDecimal::GetNoChangeDecimal();
    nxDecimal const five(5, 0);
    nxDecimal const sameFive("5.0");
    ExpectRaw(nxDecimal::GetMin(null, five), 5, 0);
    ExpectRaw(nxDecimal::GetMax(five, null), 5, 0);
    ExpectRaw(nxDecimal::GetMin(sameFive, five), 50, 1);
    ExpectRaw(nxDecimal::GetMax(sameFive, five), 50, 1);
    ExpectRaw(nxDecimal::GetMin(five, nxDecimal("4.9")), 49, 1);
    EXPECT_TRUE(nxDecimal::GetMin(null, noChange).IsNoChange());
    EXPECT_TRUE(nxDecimal::GetMax(noChange, null).IsNull());
}

TEST(nxDecimalText, Parsing)
{
    struct Row
    {
        std::string text;
        long long value;
        unsigned char places;
    };
    Row const rows[] = {
        {"1.50", 150, 2},
        {"5.", 5, 0},
        {".5", 5, 1},
        {"+007", 7, 0},
        {"-0.0", 0, 1},
        {"-9223372036854775808", smallest, 0},
        {"18446744073709551617", 1, 0}, // wraps
        {std::string("1.2\0x", 5), 12, 1},
        {"0." + std::string(256, '0'), 0, 0}, // so do the places
        {"0." + std::string(300, '0') + "1", 1, 45},
    };
    for (Row const& row : rows)
    {
        nxDecimal decimal;
        EXPECT_TRUE(decimal.SetFromString(row.text, '.').IsOK()) << row.text;
        ExpectRaw(decimal, row.value, row.places);
    }
    for (char const* text :
         {"", "+", "-", ".", "-.", "1.5.2", "+-1", "1-", " 1", "1 ", "1e3", "1,5", "abc", "\xB1"})
    {
        nxDecimal decimal("7.0");
        EXPECT_TRUE(decimal.SetFromString(text, '.') == NX_ERR_INVALID_PARAMETER) << text;
        ExpectRaw(decimal, 70, 1);
    }
    nxDecimal decimal;
    EXPECT_TRUE(nxStringHelper::SetFromString("1,5", decimal, ',').IsOK());
    ExpectRaw(decimal, 15, 1);
}

TEST(nxDecimalText, PlainAndTrimmed)
{
    struct Row
    {
        nxDecimal decimal;
        unsigned char maximumPlaces;
        char const* text;
    };
    Row const rows[] = {
        {Raw(150, 2), 9, "1.50"},
        {Raw(0, 2), 9, "0.00"},
        {Raw(-5, 1), 9, "-0.5"},
        {Raw(5, 0), 9, "5"},
        {Raw(1239, 3), 2, "1.23"},
        {Raw(1239, 3), 0, "1"},
        {Raw(-1, 3), 2, "-0.00"}, // the sign of the whole number
        {Raw(-1, 3), 0, "-0"},
        {Raw(12345678901234567, 16), 12, "1.234567890123"},
        {Raw(12345678901234567, 16), 255, "1.234567890123"},
        {Raw(smallest, 0), 9, "-9223372036854775808"},
        {Raw(smallest, 7), 12, "-922337203685.4775808"},
        {Raw(smallest, 19), 12, "-0.922337203685"},
        {Raw(smallest, 20), 12, "-1.014570924054"}, // 10^20 wraps
        {Raw(smallest, 64), 12, "-0.000000000000"},
        {Raw(7, 25), 12, "0.000000000000"},
        {Raw(7, 255), 0, "0"},
        {nxDecimal::GetNullDecimal(), 9, ""},
        {nxDecimal::GetNoChangeDecimal(), 9, ""},
    };
    for (Row const& row : rows)
        EXPECT_EQ(row.decimal.GetAsTrimmedString(row.maximumPlaces, '.'), row.text);
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
    EXPECT_EQ(text, "-12.50");
    EXPECT_EQ(nxStringHelper::GetAsString(decimal), "-12.50");
    nxDecimal::GetNullDecimal().AppendAsLogString(text);
    EXPECT_EQ(text, "-12.50NULL");
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
}

TEST(nxDecimalText, StreamShowsAllPlaces)
{
    EXPECT_EQ(Written(nxDecimal("-0.5")), "-0.5");
    EXPECT_EQ(Written(nxDecimal("-12.050")), "-12.050");
    EXPECT_EQ(Written(nxDecimal("1.2345678901234567")), "1.2345678901234567");
    EXPECT_EQ(Written(nxDecimal::GetNullDecimal()), "");
    EXPECT_EQ(Written(Raw(5, 62)), "0." + std::string(61, '0') + "5");
    EXPECT_EQ(Written(Raw(-5, 63)), "-0"); // does not fit the scratch buffer
}

TEST(nxDecimalText, RoundTrip)
{
    std::mt19937_64 random(4);
    for (int i = 0; i < 100000; ++i)
    {
        nxDecimal const decimal = Raw(static_cast<long long>(random()) >> (random() % 64),
                                      static_cast<unsigned char>(random() % 13));
        nxDecimal const again(decimal.GetAsString());
        ASSERT_EQ(again.GetValue(), decimal.GetValue());
        ASSERT_EQ(again.GetDecimalPlaces(), decimal.GetDecimalPlaces());
    }
}
