// What numbers and their texts must not cost: memory.
#include "core/numbers/nxDecimal.h"
#include "core/text/nxStringHelper.h"
#include "tests/prices/nxAllocationCount.h"

#include <gtest/gtest.h>

TEST(nxDecimalCost, NoMemory)
{
    std::string const text("-1234567.89");
    nxDecimal const step("0.25");
    char buffer[nxDecimal::maximumTextSize];
    std::string out;
    out.reserve(256);

    nxAllocationCount const count;
    nxDecimal decimal;
    EXPECT_TRUE(decimal.SetFromString(text, '.').IsOK());
    decimal += decimal;
    decimal = decimal - step * step / step;
    decimal.Round(step, NX_ROUNDING_METHOD_NEAREST);
    EXPECT_TRUE(decimal < step && decimal != step);
    decimal.GetAsString(buffer, '.');
    decimal.AppendAsString(out, '.');
    decimal.AppendAsLogString(out, '.');
    EXPECT_EQ(count.Get(), 0u);
    EXPECT_EQ(out, "-2469136.00-2469136.00");
}

TEST(nxStringHelperCost, NoMemoryBeyondTheCallersString)
{
    std::string const wholeText("-1234567");
    std::string const realText("1234.5678901234567890123");
    std::string out;
    out.reserve(256);

    nxAllocationCount const count;
    int whole = 0;
    double real = 0.0;
    EXPECT_TRUE(nxStringHelper::SetFromString(wholeText, whole).IsOK());
    EXPECT_TRUE(nxStringHelper::SetFromString(realText, real, '.').IsOK());
    nxStringHelper::AppendAsString(out, whole);
    nxStringHelper::AppendAsString(out, 18446744073709551615ull);
    nxStringHelper::AppendAsString(out, real);
    nxStringHelper::AppendAsString(out, 1e300);
    nxStringHelper::AppendAsString(out, nxRoundingMethodEnum(NX_ROUNDING_METHOD_DOWN));
    EXPECT_EQ(count.Get(), 0u);
    EXPECT_EQ(out, "-1234567184467440737095516151234.5678901231.000000e+300NX_ROUNDING_METHOD_DOWN");
}
