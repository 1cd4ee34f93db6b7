// What the wrappers around a whole number, a double and a text take for null and "no change".
#include "core/numbers/nxValueWrapper.h"
#include "core/numbers/nxDoubleValueWrapper.h"
#include "core/numbers/nxStringValue.h"

#include <gtest/gtest.h>

#include <tuple>

static_assert(sizeof(nxVolume) == sizeof(unsigned int));
static_assert(std::is_trivially_copyable_v<nxVolume>);
static_assert(sizeof(nxDoubleValueWrapper) == sizeof(double));
static_assert(std::is_trivially_copyable_v<nxDoubleValueWrapper>);

static_assert(nxVolume().GetValue() == 0xFFFFFFFFu && nxVolume(0xFFFFFFFEu).IsNoChange() &&
              nxVolume(5).IsValid());

TEST(nxValueWrapper, GivesTwoNumbersUp)
{
    nxValueWrapper<long long, 9223372036854775807, -8> wrapper;
    EXPECT_TRUE(wrapper.IsNull() && !wrapper.IsNoChange() && wrapper.GetValue() == 9223372036854775807);
    wrapper = -8;
    EXPECT_TRUE(wrapper.IsNoChange() && !wrapper.IsNull() && !wrapper.IsValid());
    wrapper = 5;
    EXPECT_TRUE(wrapper.IsValid() && wrapper == 5 && wrapper != 6);
    wrapper.SetNull();
    EXPECT_TRUE(wrapper.IsNull());
    wrapper.SetNoChange();
    EXPECT_EQ(wrapper.GetValue(), -8);
}

TEST(nxDoubleValueWrapper, TagsAreCrossedOverAndSettersAreNot)
{
    EXPECT_TRUE(nxDoubleValueWrapper().IsNull());
    EXPECT_TRUE(nxDoubleValueWrapper(nxNullInitalizer{}).IsNoChange());
    EXPECT_TRUE(nxDoubleValueWrapper(nxNoChangeInitalizer{}).IsNull());
    EXPECT_EQ(double(nxDoubleValueWrapper::GetNullInstance()), 0x1.FFFFFFFFFFFFEp51);
    EXPECT_EQ(double(nxDoubleValueWrapper::GetNoChangeInstance()), 0x1.FFFFFFFFFFFFCp51);
    nxDoubleValueWrapper value(5.0);
    EXPECT_TRUE(value.IsValid() && value.GetStatus() == NX_VALID);
    value.SetNull();
    EXPECT_TRUE(!value.IsValid() && value.IsNull() && value.GetStatus() == NX_NULL);
    value.SetNoChange();
    EXPECT_TRUE(!value.IsValid() && value.IsNoChange() && value.GetStatus() == NX_NOCHANGE);
    EXPECT_EQ(nxDoubleValueWrapper() + 1, 4503599627370496.0); // a sentinel is a number like any other here
}

TEST(nxDoubleValueWrapper, ComparesWithToleranceAndPrefersTheValid)
{
    nxDoubleValueWrapper const near(1.000000001);
    EXPECT_TRUE(near == 1.0 && near == 1 && near <= 1.0 && near >= 1.0);
    EXPECT_FALSE(near != 1.0 || near < 1.0 || near > 1.0);
    nxDoubleValueWrapper const above(1.00000002);
    EXPECT_TRUE(above != 1.0 && above > 1.0 && above >= 1 && near < above && above == above);
    EXPECT_FALSE(above <= 1.0 || above < 1 || above == near);

    nxDoubleValueWrapper const null = nxDoubleValueWrapper::GetNullInstance();
    nxDoubleValueWrapper const noChange = nxDoubleValueWrapper::GetNoChangeInstance();
    nxDoubleValueWrapper const five(5.0);
    nxDoubleValueWrapper const six(6.0);
    nxDoubleValueWrapper const nearFive(5.000000001);
    EXPECT_EQ(double(five.GetMax(null, five)), 5.0);
    EXPECT_EQ(double(five.GetMin(five, noChange)), 5.0);
    EXPECT_TRUE(five.GetMax(null, noChange).IsNoChange());
    EXPECT_EQ(double(five.GetMin(nearFive, five)), 5.000000001);
    EXPECT_EQ(double(five.GetMin(six, five)) + double(five.GetMax(five, six)), 11.0);
}

TEST(nxDoubleValueWrapper, Text)
{
    nxDoubleValueWrapper value(1.5);
    EXPECT_EQ(value.GetAsString() + value.GetAsLogString(), "1.51.5");
    EXPECT_FALSE(value.SetFromString("1,5").IsOK());
    EXPECT_TRUE(value.IsNull());
    // The null is not NULL: this is how logs have it.
    EXPECT_EQ(value.GetAsString() + value.GetAsLogString(), "4.503600e+15");
    EXPECT_TRUE(value.SetFromString("-2.25").IsOK());
    EXPECT_EQ(double(value), -2.25);
    value.SetNoChange();
    EXPECT_EQ(value.GetAsString() + value.GetAsLogString(), "NO_CHANGE");
}

TEST(nxStringValue, StatusAndText)
{
    using Row = std::tuple<nxStringValue, nxEnumValue, char const*>;
    for (auto const& [value, status, logText] :
         {Row{static_cast<char const*>(nullptr), NX_NULL, "NULL"}, Row{nxStringValue(), NX_VALID, ""},
          Row{nxStringValue::GetNullInstance(), NX_NULL, "NULL"}, Row{std::string("text"), NX_VALID, "text"},
          Row{nxStringValue::GetNoChangeInstance(), NX_NOCHANGE, "NO_CHANGE"}})
    {
        EXPECT_TRUE(value.GetStatus() == status) << logText;
        std::string out("kept ");
        value.AppendAsLogString(out);
        EXPECT_EQ(out, std::string("kept ") + logText);
        value.GetAsLogString(out);
        EXPECT_EQ(out + value.GetAsLogString(), std::string(logText) + logText);
    }

    nxStringValue value("text");
    value.SetNoChange();
    EXPECT_TRUE(value.IsNoChange() && value.GetValue().empty());
    std::string out("kept");
    value.AppendAsString(out);
    EXPECT_EQ(out, "kept");
    value.GetAsString(out);
    EXPECT_EQ(out + nxStringValue("x").GetAsString(), "x");
    value.SetNull();
    EXPECT_TRUE(value.IsNull() && value.SetFromString("").IsOK() && value.IsValid());
    EXPECT_TRUE(value.SetFromString(std::string("a\0b", 3)).IsOK());
    EXPECT_EQ(value.GetAsLogString().size(), 3u);
}
