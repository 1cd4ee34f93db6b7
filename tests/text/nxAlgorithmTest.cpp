// Hexadecimal text to bytes and back, and which of several patterns fits a key best.
#include "core/text/nxAlgorithm.h"
#include "core/text/nxByteArray.h"

#include <gtest/gtest.h>

#include <tuple>

TEST(nxAlgorithmHex, ReadsWhatItWrites)
{
    for (unsigned int number = 0; number < 256; ++number)
    {
        std::string text("0x");
        nxAlgorithm::AppendAsHex(static_cast<unsigned char>(number), text);
        unsigned char value = static_cast<unsigned char>(~number);
        EXPECT_TRUE(text.size() == 4 && nxAlgorithm::SetFromHex(text, value).IsOK() && value == number)
            << text;
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
        {ends, "CME.FUT.ES", true, "CME.*.*"}, // one early field outweighs all later ones
        {ends, "CME.FUT.ES", false, "*.FUT.ES"},
        {Patterns{"CME.*"}, "CME.FUT.ES", true, "none"}, // as many fields as the key
        {Patterns{"a", "a."}, "a.", true,
         "a"}, // a last separator adds no field; of equals the first in order stays
        {Patterns{"", "."}, ".", true, "."},
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
