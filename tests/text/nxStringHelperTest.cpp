// The exact texts of numbers, the strictness of their parsers, and the handling of texts.
#include "core/text/nxStringHelper.h"
#include "core/vocabulary/nxBuySellEnum.h"

#include <gtest/gtest.h>

#include <cctype>
#include <cmath>
#include <limits>
#include <tuple>

namespace
{

template <class T>
std::string Appended(T value)
{
    std::string text("x");
    nxStringHelper::AppendAsString(text, value);
    return text.substr(1);
}

template <class T>
void ExpectText(T value, char const* text)
{
    EXPECT_EQ(nxStringHelper::GetAsString(value), text);
    EXPECT_EQ(Appended(value), text);
}

/// Parses into `old` and returns what it then holds.
template <class T>
T Parsed(std::string const& text, T old, bool accepted)
{
    EXPECT_EQ(nxStringHelper::SetFromString(text, old).IsOK(), accepted) << text;
    return old;
}

} // namespace

TEST(nxStringHelperText, WholeNumbers)
{
    ExpectText(true, "TRUE");
    ExpectText(false, "FALSE");
    ExpectText('A', "65");
    ExpectText(static_cast<char>(-128), "-128");
    ExpectText(static_cast<unsigned char>(255), "255");
    EXPECT_EQ(nxStringHelper::GetAsString(-7l), "-7");
}

TEST(nxStringHelperText, OtherValues)
{
    ExpectText(nxBuySellEnum(NX_BUY), "BUY");
    ExpectText(0.5f, "0.5");
    EXPECT_EQ(nxStringHelper::GetAsString(0.1f), "0.100000001"); // widened, not shortened
    std::string text("kept");
    nxStringHelper::AppendAsString(text, static_cast<char const*>(nullptr));
    nxStringHelper::AppendAsString(text, "!");
    EXPECT_EQ(text, "kept!");
}

TEST(nxStringHelperText, Doubles)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    using Row = std::tuple<double, unsigned int, char const*>;
    Row const rows[] = {
#include "tests/text/doubles.def"
    };
    for (auto const& [value, precision, text] : rows)
    {
        EXPECT_EQ(nxStringHelper::GetAsString(value, precision), text) << value;
        std::string appended;
        nxStringHelper::AppendAsString(appended, value, precision);
        EXPECT_EQ(appended, text) << value;
    }
    (void)nxStringHelper::GetAsString(infinity - infinity); // any text, no undefined cast
}

TEST(nxStringHelperParse, WholeNumbers)
{
    unsigned int value = 7; // a view is read by its length
    EXPECT_TRUE(nxStringHelper::SetFromStringView(std::string_view("123456", 3), value).IsOK());
    for (std::string_view const text :
         {std::string_view("12\0", 3), std::string_view(""), std::string_view("-1")})
        EXPECT_FALSE(nxStringHelper::SetFromStringView(text, value).IsOK());
    EXPECT_EQ(value, 123u);
}

TEST(nxStringHelperParse, OtherValues)
{
    EXPECT_TRUE(Parsed("TRUE", false, true));
    EXPECT_FALSE(Parsed("FALSE", true, true));
    EXPECT_FALSE(Parsed("true", true, false)); // false, although it was refused
    EXPECT_FALSE(Parsed("TRUE ", true, false));
    EXPECT_EQ(Parsed("any text", std::string("old"), true), "any text");
    EXPECT_TRUE(Parsed("SELL", nxBuySellEnum(NX_BUY), true) == NX_SELL);
    EXPECT_TRUE(Parsed("Sell", nxBuySellEnum(NX_BUY), false) == NX_BUY);
    EXPECT_TRUE(Parsed("TRUE", nxBuySellEnum(NX_BUY), false).IsUndefined());
}

TEST(nxStringHelperParse, Real)
{
    EXPECT_TRUE(std::signbit(Parsed("-0.0", 7.0, true)));
    EXPECT_EQ(Parsed(std::string(400, '9'), 7.0, true), std::numeric_limits<double>::infinity());
}

TEST(nxStringHelperHandling, TrimsStripsAndPads)
{
    std::string zeros("1.500");
    nxStringHelper::RightTrim(zeros, "0.");
    nxStringHelper::RightTrim(zeros, "");
    EXPECT_EQ(zeros, "1.5");

    std::string text("a,b,,c,");
    nxStringHelper::Strip(text, ',');
    EXPECT_EQ(text, "abc");

    nxStringHelper::PadLeft(text, 5, '0');
    EXPECT_EQ(text, "00abc");
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
                                          {"HTTPServer", "HTTPSERVER"},
                                          {"a1B", "A1B"},
                                          {"", ""}})
        EXPECT_EQ(nxStringHelper::GetUppercaseAndUnderscoreFormatted(name), formatted);
}

TEST(nxStringHelperHandling, ComparesBehindAZeroByte)
{
    std::string const threeBytes("a\0b", 3);
    std::string const threeOthers("A\0C", 3);
    EXPECT_FALSE(nxStringHelper::Compare(threeBytes, threeOthers, NX_CASE_INSENSITIVE));
    EXPECT_TRUE(nxStringHelper::Compare(threeBytes, std::string("A\0B", 3), NX_CASE_INSENSITIVE));
}
