// Numbers and bytes as hexadecimal text; a fuzz target holds the way back and the best match of patterns.
#include "core/text/nxAlgorithm.h"
#include "core/text/nxByteArray.h"

#include <gtest/gtest.h>

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
