// Plain and quoted fields of one text; a fuzz target holds each way by itself against a state machine.
#include "core/text/nxStringParser.h"

#include <gtest/gtest.h>

TEST(nxStringParser, BothFormsShareOneCursor)
{
    std::string const text("1;\"2;3\";4");
    nxStringParser parser(text);
    EXPECT_EQ(parser.GetSubString(';'), "1");
    EXPECT_FALSE(parser.IsFullyParsed());
    EXPECT_EQ(parser.GetSubString(';', '"'), "2;3");
    EXPECT_EQ(parser.GetSubString(';'), "4");
    EXPECT_TRUE(parser.IsFullyParsed());
}
