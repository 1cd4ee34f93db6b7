// That the short way of usual numbers to text and the long way of all numbers lead to the same text.
#include "core/numbers/nxDecimal.h"
#include "core/text/nxStringHelper.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <cstdlib>
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

TEST(nxUsualNumber, WholeAndDecimalHaveTheDigitsOfTheValue)
{
    std::mt19937_64 random(2);
    std::string out;
    for (int i = 0; i < numbers; ++i)
    {
        // Of one to nine digits: the short way ends at eight.
        long long const magnitude = static_cast<long long>(random() % 1000000000) >> random() % 30;
        long long const value = i % 2 == 0 ? magnitude : -magnitude;
        int const places = static_cast<int>(random() % 10);
        nxDecimal const decimal =
            nxDecimal::ConstructFromValueAndDecimalPlaces(value, static_cast<unsigned char>(places));
        std::string text = decimal.GetAsString();
        char buffer[nxDecimal::maximumTextSize];
        std::fill(std::begin(buffer), std::end(buffer), '#');
        decimal.GetAsString(buffer);
        ASSERT_EQ(buffer, text);
        ASSERT_EQ(buffer[text.size() + 1], '#') << "a byte behind the text of " << text;
        std::size_t const point = text.find('.');
        ASSERT_EQ(places, point == std::string::npos ? 0 : static_cast<int>(text.size() - point - 1)) << text;
        if (places != 0)
            text.erase(point, 1);
        ASSERT_EQ(std::strtoll(text.c_str(), nullptr, 10), value) << text;

        out.clear();
        nxStringHelper::AppendAsString(out, value);
        ASSERT_EQ(out, std::to_string(value));
    }
}
