// What the registries accept from a class of a host. In a program of its own, since rows stay for ever.

#include "core/vocabulary/nxBitMask.h"
#include "core/vocabulary/nxBuySellEnum.h"
#include "core/vocabulary/nxGenericEnum.h"
#include "tests/vocabulary/nxAnyEnum.h"

#include <gtest/gtest.h>

#include <string>

namespace
{
nxGenericEnum ValueOf(std::string const& token)
{
    nxGenericEnum value;
    (void)value.SetFromString(token);
    return value;
}

struct HostMask : public nxBitMask
{
    explicit HostMask(unsigned int bits) : nxBitMask(bits)
    {
    }
    std::string GetClassNameA() const override
    {
        return "HostMask";
    }
    using nxBitMask::_Register;
};
} // namespace

TEST(nxEnumRegistration, EntersARowUnlessItsNumberOrTokenIsTaken)
{
    EXPECT_TRUE(nxAnyEnum::_Register(900011, "FIRST_WORD", "First"));
    EXPECT_TRUE(nxEnum::IsRegisteredEnumValue(900011));
    EXPECT_FALSE(nxAnyEnum::_Register(900011, "OTHER_WORD", "Other"));
    EXPECT_EQ(nxAnyEnum(900011).GetShortDescription(), "FIRST_WORD");
    EXPECT_TRUE(ValueOf("OTHER_WORD").IsUndefined());

    EXPECT_FALSE(nxAnyEnum::_Register(900012, "FIRST_WORD", "Second"));
    EXPECT_FALSE(nxEnum::IsRegisteredEnumValue(900012));
    EXPECT_EQ(ValueOf("FIRST_WORD"), 900011u);
    EXPECT_EQ(nxAnyEnum(900011).GetLongDescription(), "First");

    EXPECT_FALSE(nxAnyEnum::_Register(900013, "BUY", "Not the side"));
    EXPECT_FALSE(nxAnyEnum::_Register(0, "ZERO_WORD", "Zero"));
}

TEST(nxEnumRegistration, LimitsTheTokenAndNothingElse)
{
    std::string const longest(64, 'x');
    EXPECT_FALSE(nxAnyEnum::_Register(900021, longest + 'x', "too long"));
    EXPECT_FALSE(nxEnum::IsRegisteredEnumValue(900021));
    EXPECT_TRUE(ValueOf(longest + 'x').IsUndefined());

    std::string const text(5000, 'y');
    EXPECT_TRUE(nxAnyEnum::_Register(900021, longest, text));
    EXPECT_EQ(nxAnyEnum(900021).GetLongDescription(), text);
    EXPECT_EQ(ValueOf(longest), 900021u);

    EXPECT_TRUE(nxAnyEnum::_Register(900022, "", ""));
    EXPECT_EQ(ValueOf(""), 900022u);
    EXPECT_FALSE(nxAnyEnum::_Register(900023, "", "empty again"));
}

// References into the registry are good for as long as the process lives, whatever is entered later.
TEST(nxEnumRegistration, LeavesReferencesGood)
{
    std::string const& token = nxBuySellEnum(NX_BUY).GetShortDescription();
    char const* const letters = token.data();
    for (unsigned int number = 910000; number < 912000; ++number)
        EXPECT_TRUE(nxAnyEnum::_Register(number, "LATE_" + std::to_string(number), "Late"));
    EXPECT_EQ(token, "BUY");
    EXPECT_EQ(&nxBuySellEnum(NX_BUY).GetShortDescription(), &token);
    EXPECT_EQ(token.data(), letters);
}

TEST(nxBitMaskRegistration, KeepsTheFirstRowOfABitAndIsAlwaysTrue)
{
    HostMask mask(0x5);
    EXPECT_EQ(mask.GetShortDescription(","), "No Description Available");
    EXPECT_TRUE(mask._Register(0x1, "ONE", "One"));
    EXPECT_TRUE(mask._Register(0x1, "UNO", "Uno"));
    EXPECT_TRUE(HostMask::_Register("HostMask", 0x4, std::string(100, 'x'), "")); // no limit here
    EXPECT_EQ(mask.GetShortDescription(","), "ONE," + std::string(100, 'x'));
    EXPECT_EQ(mask.GetLongDescription("/"), "One/");

    // An empty word in front takes no separator: the result is still empty when the next one comes.
    EXPECT_TRUE(HostMask::_Register("HostMask", 0x2, "", ""));
    EXPECT_TRUE(HostMask::_Register("HostMask", 0x8, "EIGHT", "Eight"));
    EXPECT_EQ(HostMask(0xA).GetShortDescription(","), "EIGHT");
    EXPECT_EQ(HostMask(0xB).GetShortDescription(","), "ONE,,EIGHT");
}
