// Which versions fit the library, and how a version is taken apart.
#include "core/process/nxVersionNumber.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>

TEST(nxVersionNumber, TakesVersionsApartAndComparesMajorAndMinor)
{
    nxVersionNumber const& version = nxVersionNumber::GetInstance();
    EXPECT_EQ(version.GetVersionNumber(), "1.37.2032");
    struct
    {
        char const* text;
        unsigned int parts[3];
        bool isCompatible;
    } const rows[] = {
        {"1.37.2032", {1, 37, 2032}, true},
        {"1.37", {1, 37, 0}, true},
        {"1.37abc.5", {1, 37, 5}, true},
        {"01.037.99999", {1, 37, 99999}, true},
        {"", {0, 0, 0}, false},
        {"1.38.2032", {1, 38, 2032}, false},
        {"2.37.2032", {2, 37, 2032}, false},
        {"1.2.3.4", {1, 2, 3}, false},
        {"..7", {0, 0, 7}, false},
        {"a1. 2.+3", {0, 2, 3}, false},
        {"-1.- 1.--1", {UINT_MAX, 0, 0}, false},
        {"2147483647.2147483648.-2147483649", {INT_MAX, INT_MAX, 1u << 31}, false},
        {"99999999999999999999999.0000000000000000000000012.-", {INT_MAX, 12, 0}, false},
    };
    for (auto const& row : rows)
    {
        unsigned int parts[3] = {9, 9, 9};
        version.GetMajorMinorSubVersionParts(row.text, parts[0], parts[1], parts[2]);
        EXPECT_TRUE(std::equal(parts, parts + 3, row.parts)) << row.text;
        EXPECT_EQ(version.IsCompatibleVersionNumber(row.text), row.isCompatible) << row.text;
    }
}
