// Hexadecimal text to bytes and back, and which of several patterns fits a key best.
#include "core/text/nxAlgorithm.h"
#include "core/text/nxByteArray.h"

#include <gtest/gtest.h>

#include <tuple>

TEST(nxAlgorithmHex, ReadsEveryByteInEveryForm)
{
    for (unsigned int number = 0; number < 256; ++number)
    {
        std::string capitals;
        nxAlgorithm::AppendAsHex(static_cast<unsigned char>(number), capitals);
        ASSERT_EQ(capitals.size(), 2u);
        std::string small(capitals);
        for (char& digit : small)
            digit = static_cast<char>(digit >= 'A' ? digit + ('a' - 'A') : digit);
        std::vector<std::string> forms = {capitals, small, "0x" + capitals, "0x" + small};
        if (number < 16)
        {
            forms.push_back(capitals.substr(1));
            forms.push_back("0x" + small.substr(1));
        }
        for (std::string const& form : forms)
        {
            unsigned char value = static_cast<unsigned char>(~number);
            EXPECT_TRUE(nxAlgorithm::SetFromHex(form, value).IsOK()) << form;
            EXPECT_EQ(value, number) << form;
        }
    }
}

TEST(nxAlgorithmHex, RefusesOtherTextAndLeavesTheValue)
{
    for (char const* const text :
         {"", "0x", "0xG1", "0x1G", "0X1F", "0x1FF", "1FF", "G", "x1", "/0", ":0", "@1", " 1", "-1", "0x-1"})
    {
        unsigned char value = 77;
        EXPECT_EQ(nxAlgorithm::SetFromHex(text, value), NX_ERR_INVALID_PARAMETER) << text;
        EXPECT_EQ(value, 77) << text;
    }
}

TEST(nxAlgorithmHex, WritesBytesInOrder)
{
    EXPECT_EQ(nxAlgorithm::GetAsHex(static_cast<unsigned short>(0xAB12)), "AB12");
    EXPECT_EQ(nxAlgorithm::GetAsHex(static_cast<unsigned short>(0x0F)), "000F");
    unsigned char bytes[] = {0x00, 0x9F, 0xFF};
    std::string text("x");
    nxAlgorithm::AppendAsHex(nxByteArray{bytes, 3}, text);
    EXPECT_EQ(text, "x009FFF");
    nxAlgorithm::AppendAsHex(nxByteArray{nullptr, 3}, text);
    nxAlgorithm::AppendAsHex(nxByteArray{bytes, 0}, text);
    EXPECT_EQ(text, "x009FFF");
    nxAlgorithm::GetAsHex(std::vector<unsigned char>{0x1A}, text);
    EXPECT_EQ(text, "1A");
    nxAlgorithm::GetAsHex(nxByteArray{}, text);
    EXPECT_EQ(text, "");
}

TEST(nxAlgorithmBestMatch, WeighsFieldsInTheirOrder)
{
    using Patterns = std::set<std::string>;
    using Row = std::tuple<Patterns, std::string, bool, std::string>; // ends in "none" when nothing matches
    Patterns const ladder = {"CME.*.*", "CME.FUT.*", "*.*.*"};
    Patterns const ends = {"CME.*.*", "*.FUT.ES"};
    Row const rows[] = {
        {ladder, "CME.FUT.ES", true, "CME.FUT.*"},
        {ladder, "CME.FUT.ES", false, "CME.FUT.*"},
        {ends, "CME.FUT.ES", true, "CME.*.*"}, // one early field outweighs all later ones
        {ends, "CME.FUT.ES", false, "*.FUT.ES"},
        {Patterns{"*.b", "a.*"}, "a.b", true, "a.*"},
        {ladder, "ICE.FUT.ES", true, "*.*.*"},
        {Patterns{"CME.*"}, "CME.FUT.ES", true, "none"}, // as many fields as the key
        {Patterns{"cme"}, "CME", true, "none"},
        {Patterns{"a", "a."}, "a.", true,
         "a"}, // a last separator adds no field; of equals the first in order stays
        {Patterns{"", "."}, ".", true, "."},
        {Patterns{"*"}, "", true, "none"},
        {Patterns{}, "a", true, "none"},
        {Patterns{"a.b"}, "a.*", true, "none"}, // a wildcard in the key is a text like another
        {Patterns{"a.*"}, "a.*", true, "a.*"}};
    for (auto const& [patterns, key, firstFieldFirst, expected] : rows)
    {
        std::string best("none");
        EXPECT_EQ(nxAlgorithm::GetBestMatch(patterns, key, best, firstFieldFirst, '.', "*"),
                  expected != "none")
            << key;
        EXPECT_EQ(best, expected) << key;
    }
}

TEST(nxAlgorithmBestMatch, TakesUpToThirtyTwoFields)
{
    std::string key("f0");
    std::string lastFieldOpen("f0");
    std::string firstFieldOpen("*");
    for (int i = 1; i < 32; ++i)
    {
        std::string const field = ".f" + std::to_string(i);
        lastFieldOpen += i == 31 ? ".*" : field;
        firstFieldOpen += field;
        key += field;
    }
    std::string best;
    EXPECT_TRUE(nxAlgorithm::GetBestMatch({firstFieldOpen, lastFieldOpen}, key, best, true, '.', "*"));
    EXPECT_EQ(best, lastFieldOpen);
    EXPECT_TRUE(nxAlgorithm::GetBestMatch({firstFieldOpen, lastFieldOpen}, key, best, false, '.', "*"));
    EXPECT_EQ(best, firstFieldOpen);
    EXPECT_FALSE(nxAlgorithm::GetBestMatch({key + ".x"}, key + ".x", best, true, '.', "*"));
    EXPECT_EQ(best, firstFieldOpen);
}
