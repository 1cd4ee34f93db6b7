// What the wrappers around a whole number, a double and a text take for null and "no change".
#include "core/numbers/nxValueWrapper.h"
#include "core/numbers/nxDoubleValueWrapper.h"
#include "core/numbers/nxStringValue.h"

#include <gtest/gtest.h>

#include <bit>

static_assert(sizeof(nxVolume) == sizeof(unsigned int));
static_assert(std::is_trivially_copyable_v<nxVolume>);
static_assert(sizeof(nxDoubleValueWrapper) == sizeof(double));
static_assert(std::is_trivially_copyable_v<nxDoubleValueWrapper>);

namespace
{

template <class WrapperT, class T>
void ExpectSentinels(T nullNumber, T noChangeNumber)
{
    WrapperT wrapper;
    EXPECT_TRUE(wrapper.IsNull());
    EXPECT_EQ(wrapper.GetValue(), nullNumber);
    wrapper = noChangeNumber;
    EXPECT_TRUE(wrapper.IsNoChange() && !wrapper.IsNull() && !wrapper.IsValid());
    wrapper = T(5);
    EXPECT_TRUE(wrapper.IsValid() && wrapper == T(5) && wrapper != WrapperT());
    wrapper.SetNull();
    EXPECT_TRUE(wrapper == WrapperT(nullNumber));
    wrapper.SetNoChange();
    EXPECT_EQ(wrapper.GetValue(), noChangeNumber);
}

} // namespace

TEST(nxValueWrapper, SentinelsOfEachForm)
{
    ExpectSentinels<nxVolume>(0xFFFFFFFFu, 0xFFFFFFFEu);
    ExpectSentinels<nxValueWrapper<int, 2147483647, 2147483646>>(2147483647, 2147483646);
    ExpectSentinels<nxValueWrapper<long long, 9223372036854775807, 9223372036854775806>>(
        0x7FFFFFFFFFFFFFFFll, 0x7FFFFFFFFFFFFFFEll);
}

TEST(nxDoubleValueWrapper, TagsAreCrossedOverAndSettersAreNot)
{
    EXPECT_TRUE(nxDoubleValueWrapper().IsNull());
    EXPECT_TRUE(nxDoubleValueWrapper(nxNullInitalizer{}).IsNoChange());
    EXPECT_TRUE(nxDoubleValueWrapper(nxNoChangeInitalizer{}).IsNull());
    EXPECT_EQ(std::bit_cast<unsigned long long>(double(nxDoubleValueWrapper::GetNullInstance())),
              0x432FFFFFFFFFFFFEull);
    EXPECT_EQ(std::bit_cast<unsigned long long>(double(nxDoubleValueWrapper::GetNoChangeInstance())),
              0x432FFFFFFFFFFFFCull);
    nxDoubleValueWrapper value(5.0);
    EXPECT_TRUE(value.GetStatus() == NX_VALID);
    value.SetNull();
    EXPECT_TRUE(value.IsNull() && value.GetStatus() == NX_NULL);
    value.SetNoChange();
    EXPECT_TRUE(value.IsNoChange() && value.GetStatus() == NX_NOCHANGE);
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
    nxDoubleValueWrapper const nearFive(5.000000001);
    EXPECT_EQ(double(five.GetMax(null, five)), 5.0);
    EXPECT_EQ(double(five.GetMin(five, noChange)), 5.0);
    EXPECT_TRUE(five.GetMax(null, noChange).IsNoChange());
    EXPECT_EQ(double(five.GetMin(nearFive, five)), 5.000000001);
}

TEST(nxDoubleValueWrapper, Text)
{
    nxDoubleValueWrapper value(1.5);
    EXPECT_EQ(value.GetAsString() + value.GetAsLogString(), "1.51.5");
    EXPECT_FALSE(value.SetFromString("1,5").IsOK());
    EXPECT_TRUE(value.IsNull());
    EXPECT_EQ(value.GetAsString(), "");
    EXPECT_EQ(value.GetAsLogString(), "4.503600e+15"); // not NULL: this is how logs have it
    EXPECT_TRUE(value.SetFromString("-2.25").IsOK());
    EXPECT_EQ(double(value), -2.25);
    value.SetNoChange();
    EXPECT_EQ(value.GetAsString(), "");
    EXPECT_EQ(value.GetAsLogString(), "NO_CHANGE");
}

TEST(nxStringValue, StatusAndText)
{
    char const* const nothing = nullptr;
    EXPECT_TRUE(nxStringValue(nothing).IsNull());
    EXPECT_EQ(nxStringValue().GetAsLogString(), "");
    EXPECT_EQ(nxStringValue::GetNullInstance().GetAsLogString(), "NULL");
    EXPECT_EQ(nxStringValue::GetNoChangeInstance().GetAsLogString(), "NO_CHANGE");

    nxStringValue value("text");
    std::string out("kept ");
    value.AppendAsLogString(out);
    EXPECT_EQ(out, "kept text");
    value.SetNoChange();
    EXPECT_TRUE(value.IsNoChange() && value.GetValue().empty());
    value.AppendAsString(out);
    EXPECT_EQ(out, "kept text");
    value.GetAsString(out);
    EXPECT_EQ(out, "");
    value.SetNull();
    EXPECT_TRUE(value.SetFromString("").IsOK());
    EXPECT_TRUE(value.IsValid());
    EXPECT_TRUE(value.SetFromString(std::string("a\0b", 3)).IsOK());
    EXPECT_EQ(value.GetAsLogString().size(), 3u);
}
