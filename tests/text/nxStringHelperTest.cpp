// The texts of numbers, their parsers, and the handling of texts, so far as no fuzz target has them.
#include "core/text/nxStringHelper.h"
#include "core/vocabulary/nxBuySellEnum.h"

#include <gtest/gtest.h>

#include <cctype>
#include <cmath>
#include <cstdint>
#include <limits>
#include <tuple>

namespace
{
constexpr double infinity = std::numeric_limits<double>::infinity();

template <class... T>
std::string Text(T... value)
{
    std::string appended;
    appended.reserve(100); // the short way of usual numbers wants room
    nxStringHelper::AppendAsString(appended, value...);
    EXPECT_EQ(nxStringHelper::GetAsString(value...), appended);
    return appended;
}

/// Parses into `old` and returns what it then holds.
template <class T>
T Parsed(std::string const& text, T old, bool accepted)
{
    EXPECT_EQ(nxStringHelper::SetFromString(text, old).IsOK(), accepted) << text;
    return old;
}
} // namespace

TEST(nxStringHelperText, OfEachType)
{
    EXPECT_EQ(Text(true) + Text(false), "TRUEFALSE");
    EXPECT_EQ(Text('A') + Text(static_cast<char>(-128)) + Text(static_cast<unsigned char>(255)), "65-128255");
    EXPECT_EQ(nxStringHelper::GetAsString(-7l), "-7");
    EXPECT_EQ(Text(static_cast<std::uint64_t>(-1)), "18446744073709551615");
    EXPECT_EQ(Text(nxBuySellEnum(NX_BUY)), "BUY");
    EXPECT_EQ(Text(0.5f) + Text(0.1f), "0.50.100000001"); // widened, not shortened
    std::string text("kept");
    nxStringHelper::AppendAsString(text, static_cast<char const*>(nullptr));
    nxStringHelper::AppendAsString(text, "!");
    nxStringHelper::AppendAsString(text, std::string("?"));
    EXPECT_EQ(text, "kept!?");
}

// All but ties and bounds is held by a fuzz target.
TEST(nxStringHelperText, Doubles)
{
    using Row = std::tuple<double, unsigned int, char const*>;
    Row const rows[] = {
        {1.25, 1, "1.2"},
        {1.35, 1, "1.4"}, // stored just above the half
        {0.05, 1, "0.1"}, // a half behind 0 goes up
        {1.5, 0, "2"},
        {2.5, 0, "2"},
        // An exact half behind nines isn't carried.
        {0.95, 1, "0.1"},
        {0.9999999995, 9, "0.1"},
        // A sign stays, unless there was none but in the bits.
        {-1e-12, 9, "-0"},
        {-0.25, 0, "-0"},
        {-0.0, 9, "0"},
        {0.0, 9, "0"},
        // The end of the fixed form.
        {2147483647.0, 9, "2147483647"},
        {-2147483646.5, 9, "-2147483646.5"},
        {2147483647.5, 9, "2.147484e+09"},
        {infinity, 9, "inf"},
        // Precisions out of range.
        {1.5, 0x80000000u, "2"},
        {1.5, 0x7FFFFFFFu, "1.5"},
    };
    for (auto const& [value, precision, text] : rows)
        EXPECT_EQ(Text(value, precision), text) << value;
    (void)nxStringHelper::GetAsString(infinity - infinity); // any text, no undefined cast
}

TEST(nxStringHelperParse, EachType)
{
    unsigned int value = 7; // a view is read by its length
    EXPECT_TRUE(nxStringHelper::SetFromStringView(std::string_view("123456", 3), value).IsOK());
    for (std::string_view const text :
         {std::string_view("12\0", 3), std::string_view(""), std::string_view("-1")})
        EXPECT_FALSE(nxStringHelper::SetFromStringView(text, value).IsOK());
    EXPECT_EQ(value, 123u);
    EXPECT_EQ(Parsed("18446744073709551617", std::uint64_t{7}, true), 1u);
    EXPECT_EQ(Parsed("-9223372036854775808", std::int64_t{7}, true), std::numeric_limits<std::int64_t>::min());
    EXPECT_FALSE(Parsed("true", true, false)); // false, although it was refused
    EXPECT_EQ(Parsed("any text", std::string("old"), true), "any text");
    EXPECT_TRUE(Parsed("SELL", nxBuySellEnum(NX_BUY), true) == NX_SELL);
    EXPECT_TRUE(Parsed("Sell", nxBuySellEnum(NX_BUY), false) == NX_BUY);
    EXPECT_TRUE(Parsed("TRUE", nxBuySellEnum(NX_BUY), false).IsUndefined());
    EXPECT_TRUE(std::signbit(Parsed("-0.0", 7.0, true)));
    EXPECT_EQ(Parsed(std::string(400, '9'), 7.0, true), infinity);
}

TEST(nxStringHelperHandling, TrimsStripsAndPads)
{
    std::string text("1.500");
    nxStringHelper::RightTrim(text, "0.");
    nxStringHelper::RightTrim(text, "");
    EXPECT_EQ(text, "1.5");
    text = "a,b,,c,";
    nxStringHelper::Strip(text, ',');
    EXPECT_EQ(text, "abc");
    nxStringHelper::PadLeft(text, 5, '0');
    nxStringHelper::PadRight(text, 7, '-');
    EXPECT_EQ(text, "00abc--");
    nxStringHelper::PadLeft(text, 3, 'x');
    nxStringHelper::PadRight(text, 7, 'x');
    EXPECT_EQ(text, "00abc--");
}

TEST(nxStringHelperHandling, Case)
{
    if (std::toupper('i') != 'I')
        GTEST_SKIP() << "case goes by the host's locale";
    std::string text("aZ_\xE4\xC4");
    nxStringHelper::ToUpper(text);
    EXPECT_EQ(text, "AZ_\xE4\xC4");
    nxStringHelper::ToLower(text);
    EXPECT_EQ(text, "az_\xE4\xC4");
    for (int c = -128; c < 128; ++c)
    {
        EXPECT_EQ(nxStringHelper::IsUppercase(static_cast<char>(c)), c >= 'A' && c <= 'Z');
        EXPECT_EQ(nxStringHelper::IsLowercase(static_cast<char>(c)), c >= 'a' && c <= 'z');
    }
    for (auto const& [name, formatted] : {std::pair("firstName", "FIRST_NAME"),
                                          {"nxDate", "NX_DATE"},
                                          {"a1B", "A1B"},
                                          {"HTTPServer", "HTTPSERVER"},
                                          {"", ""}})
        EXPECT_EQ(nxStringHelper::GetUppercaseAndUnderscoreFormatted(name), formatted);
    // Also behind a zero byte.
    std::string const three("a\0b", 3);
    EXPECT_FALSE(nxStringHelper::Compare(three, std::string("A\0C", 3), NX_CASE_INSENSITIVE));
    EXPECT_TRUE(nxStringHelper::Compare(three, std::string("A\0B", 3), NX_CASE_INSENSITIVE));
}
