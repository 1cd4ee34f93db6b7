// How a decimal meets its step: direction, ties, what it refuses, and the quotient that is rounded itself.
#include "core/numbers/nxDecimal.h"

#include <gtest/gtest.h>

namespace
{

struct RoundRow
{
    char const* value;
    char const* step;
    char const* down;
    char const* up;
    char const* nearest;
    char const* modifiedNearest;
};

std::string Rounded(char const* value, char const* step, nxEnumValue method)
{
    nxDecimal decimal(value);
    decimal.Round(nxDecimal(step), nxRoundingMethodEnum(method));
    return decimal.GetAsString();
}

} // namespace

TEST(nxDecimalRound, GivesAMultipleOfTheStep)
{
    RoundRow const rows[] = {
        {"1.25", "0.1", "1.2", "1.3", "1.3", "1.2"},
        {"-1.25", "0.1", "-1.3", "-1.2", "-1.3",
         "-1.2"}, // DOWN is toward minus infinity, a tie away from zero
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
    };
    for (RoundRow const& row : rows)
    {
        SCOPED_TRACE(std::string(row.value) + " by " + row.step);
        EXPECT_EQ(Rounded(row.value, row.step, NX_ROUNDING_METHOD_DOWN), row.down);
        EXPECT_EQ(Rounded(row.value, row.step, NX_ROUNDING_METHOD_UP), row.up);
        EXPECT_EQ(Rounded(row.value, row.step, NX_ROUNDING_METHOD_NEAREST), row.nearest);
        EXPECT_EQ(Rounded(row.value, row.step, NX_UNDEFINED), row.nearest);
        EXPECT_EQ(Rounded(row.value, row.step, NX_ROUNDING_METHOD_MODIFIED_NEAREST), row.modifiedNearest);
    }
}

TEST(nxDecimalRoundRefusal, LeavesTheValue)
{
    EXPECT_EQ(Rounded("1.25", "0.0", NX_ROUNDING_METHOD_UP), "1.25");
    EXPECT_EQ(Rounded("1.25", "", NX_ROUNDING_METHOD_UP), "1.25"); // a null step
    nxDecimal null(nxNullInitalizer{});
    null.Round(nxDecimal(1, 0), NX_ROUNDING_METHOD_UP);
    EXPECT_TRUE(null.IsNull());
}

TEST(nxDecimalRound, TheSmallestNumberByMinusOneWraps)
{
    EXPECT_EQ(Rounded("-9223372036854775808", "-1", NX_ROUNDING_METHOD_DOWN), "-9223372036854775808");
}

TEST(nxDecimalRound, BesideItself)
{
    nxDecimal value("1.25");
    value.Round(value, NX_ROUNDING_METHOD_UP);
    EXPECT_EQ(value.GetAsString(), "1.25");
}
