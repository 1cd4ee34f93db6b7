// That the short way of usual numbers to text and the long way of all numbers lead to the same text.
#include "core/numbers/nxDecimal.h"
#include "core/text/nxStringHelper.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <cstdio>
#include <random>

namespace
{
constexpr int numbers = 300000;

/// Prices, ties at nine places, numbers near the end of the short way, and any bits.
double MakeDouble(std::mt19937_64& random, int kind)
{
    std::uint64_t const bits = random();
    double const sign = bits >> 63 != 0 ? -1.0 : 1.0;
    switch (kind % 5)
    {
    case 0: return sign * static_cast<double>(bits % 10000000) / 100.0;
    case 1: return sign * static_cast<double>(bits % 1000000000000) / 1024.0;
    case 2:
        return sign *
               (static_cast<double>(99999990 + bits % 20) + static_cast<double>(bits % 3) * 0.4999999997);
    case 3: return sign * static_cast<double>(bits % 10000000000) / 1e9;
    default: return std::bit_cast<double>(bits);
    }
}
} // namespace

TEST(nxUsualNumber, DoubleIsTheSameInRoomAndWithout)
{
    std::mt19937_64 random(1);
    std::string roomy;
    roomy.reserve(100);
    for (int i = 0; i < numbers; ++i)
    {
        double const value = MakeDouble(random, i);
        roomy.assign("x");
        nxStringHelper::AppendAsString(roomy, value);
        // A new string has less room than the short way asks for.
        ASSERT_EQ(roomy, "x" + nxStringHelper::GetAsString(value)) << value;
    }
}

TEST(nxUsualNumber, WholeAndDecimalAreThoseOfPrintf)
{
    std::mt19937_64 random(2);
    std::string out;
    char expected[64];
    for (int i = 0; i < numbers; ++i)
    {
        // Of one to nine digits: the short way ends at eight.
        long long const magnitude = static_cast<long long>(random() % 1000000000) >> random() % 30;
        long long const value = i % 2 == 0 ? magnitude : -magnitude;
        int const places = static_cast<int>(random() % 10);
        long long power = 1;
        for (int place = 0; place < places; ++place)
        {
            power *= 10;
        }
        char const* const sign = value < 0 ? "-" : "";
        if (places == 0)
        {
            std::snprintf(expected, sizeof expected, "%s%lld", sign, magnitude);
        }
        else
        {
            std::snprintf(expected, sizeof expected, "%s%lld.%0*lld", sign, magnitude / power, places,
                          magnitude % power);
        }
        nxDecimal const decimal =
            nxDecimal::ConstructFromValueAndDecimalPlaces(value, static_cast<unsigned char>(places));
        char buffer[nxDecimal::maximumTextSize];
        std::fill(std::begin(buffer), std::end(buffer), '#');
        decimal.GetAsString(buffer);
        ASSERT_STREQ(buffer, expected);
        ASSERT_EQ(buffer[std::string(expected).size() + 1], '#') << "a byte behind the text of " << expected;
        ASSERT_EQ(decimal.GetAsString(), expected);

        out.clear();
        nxStringHelper::AppendAsString(out, value);
        ASSERT_EQ(out, std::to_string(value));
    }
}
