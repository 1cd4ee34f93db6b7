// Which class a format has, and the shared converters behind the one-shot texts.
#include "core/prices/nxPriceConverterHelper.h"

#include "core/prices/nxDecimalPriceConverter.h"
#include "tests/concurrency/RunTogether.h"

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <typeinfo>

namespace
{
nxPriceFormatEnum Format(unsigned int number)
{
    return nxPriceFormatEnum(static_cast<nxEnumValue>(number));
}

std::unique_ptr<nxPriceConverter> Create(unsigned int number)
{
    return std::unique_ptr<nxPriceConverter>(nxPriceConverterHelper::CreatePriceConverter(Format(number)));
}
} // namespace

TEST(nxPriceConverterHelperCreate, MakesTheClassOfTheFormat)
{
    std::set<std::string> classes;
    for (unsigned int number = 4501; Format(number).GetValue() == number; ++number) // all that there are
    {
        auto const converter = Create(number);
        ASSERT_NE(converter, nullptr) << number;
        nxPriceConverter const& made = *converter;
        classes.insert(typeid(made).name());
    }
    EXPECT_EQ(classes.size(), 26u); // three formats share the decimals
    for (unsigned int const number : {4501u, 4518u, 4519u})
        EXPECT_NE(dynamic_cast<nxDecimalPriceConverter*>(Create(number).get()), nullptr);
    for (unsigned int const number : {0u, 2u, 4500u, 4529u})
        EXPECT_EQ(Create(number), nullptr) << number;
}

TEST(nxPriceConverterHelperText, FailuresLeaveTheText)
{
    std::string text = "old";
    nxDecimal const tick(0.25, 2);
    EXPECT_FALSE(nxPriceConverterHelper::GetPriceAsString(0.5, nxPriceFormatEnum(), text, true));
    EXPECT_FALSE(nxPriceConverterHelper::GetPriceAsString(0.5, tick, nxPriceFormatEnum(), text, true, false));
    EXPECT_FALSE(nxPriceConverterHelper::GetPriceAsString(nxDoubleValueWrapper(), Format(4503), text, true));
    EXPECT_FALSE(nxPriceConverterHelper::GetPriceAsString(0.5, nxDecimal(), Format(4501), text, true, false));
    EXPECT_EQ(text, "old");
}

TEST(nxPriceConverterHelperText, SharedConvertersKeepTheirTick)
{
    std::string text;
    EXPECT_TRUE(nxPriceConverterHelper::GetPriceAsString(9850.0, Format(4518), text, true));
    EXPECT_EQ(text, "99"); // no tick yet, so no places
    EXPECT_FALSE(
        nxPriceConverterHelper::GetPriceAsString(9850.5, nxDecimal(1, 0), Format(4518), text, true, true));
    EXPECT_TRUE(nxPriceConverterHelper::GetPriceAsString(9850.0, Format(4518), text, true));
    EXPECT_EQ(text, "98.50"); // the refused price left its tick
    EXPECT_TRUE(nxPriceConverterHelper::GetPriceAsString(9850.0, Format(4519), text, true));
    EXPECT_EQ(text, "1"); // each format has its own
}

TEST(nxPriceConverterHelperText, TheLockServesThreads)
{
    RunTogether(2,
                [](int thread)
                {
                    for (int round = 0; round < 5000; ++round)
                    {
                        std::string text;
                        ASSERT_TRUE(nxPriceConverterHelper::GetPriceAsString(thread == 0 ? 101.5 : -0.5,
                                                                             Format(4510), text, true));
                        ASSERT_EQ(text, thread == 0 ? "101-16" : "-0-16");
                    }
                });
}
