// Which versions fit the library, and how a version is taken apart.
#include "core/process/nxVersionNumber.h"

#include <gtest/gtest.h>

#include <climits>

TEST(nxVersionNumber, TakesVersionsApart)
{
    struct
    {
        char const* version;
        unsigned int parts[3];
    } const rows[] = {
        {"1.37.2032", {1, 37, 2032}},
        {"", {0, 0, 0}},
        {"1", {1, 0, 0}},
        {"1.2.3.4", {1, 2, 3}},
        {"..7", {0, 0, 7}},
        {"1.37abc.5", {1, 37, 5}},
        {"a1. 2.+3", {0, 2, 3}},
        {"-1.- 1.--1", {UINT_MAX, 0, 0}},
        {"2147483647.2147483648.-2147483649", {INT_MAX, INT_MAX, 1u << 31}},
        {"99999999999999999999999.0000000000000000000000012.-", {INT_MAX, 12, 0}},
    };
    for (auto const& row : rows)
    {
        unsigned int major = 9;
        unsigned int minor = 9;
        unsigned int sub = 9;
        nxVersionNumber::GetInstance().GetMajorMinorSubVersionParts(row.version, major, minor, sub);
        EXPECT_EQ(major, row.parts[0]) << row.version;
        EXPECT_EQ(minor, row.parts[1]) << row.version;
        EXPECT_EQ(sub, row.parts[2]) << row.version;
    }
}

TEST(nxVersionNumber, IsCompatibleByMajorAndMinor)
{
    nxVersionNumber const& version = nxVersionNumber::GetInstance();
    EXPECT_EQ(version.GetVersionNumber(), "1.37.2032");
    for (char const* const other : {"1.37.2032", "1.37.1", "1.37.99999", "1.37", "1.37abc.5", "01.037"})
    {
        EXPECT_TRUE(version.IsCompatibleVersionNumber(other)) << other;
    }
    for (char const* const other : {"", "1", "1.38.2032", "2.37.2032", "1.3.7", "v1.37"})
    {
        EXPECT_FALSE(version.IsCompatibleVersionNumber(other)) << other;
    }
}
