// What the registries accept from a class of a host. In a program of its own, since rows stay for ever.

#include "core/vocabulary/nxBitMask.h"
#include "core/vocabulary/nxBuySellEnum.h"
#include "core/vocabulary/nxGenericEnum.h"
#include "core/vocabulary/nxVocabularyCatalogue.h"
#include "tests/concurrency/ForkDuringFirstUse.h"
#include "tests/vocabulary/nxAnyEnum.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <tuple>

namespace
{
unsigned int ValueOf(std::string const& token)
{
    nxGenericEnum value;
    (void)value.SetFromString(token);
    return value.GetValue();
}

struct HostMask : nxBitMask
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

TEST(nxEnumRegistration, EntersARowUnlessItsNumberOrTokenIsTakenOrTooLong)
{
    std::string const longest(64, 'x');
    std::string const anyLength(5000, 'y');
    using Row = std::tuple<unsigned int, std::string, std::string, bool>;
    for (auto const& [number, token, text, isEntered] :
         {Row{900011, "FIRST_WORD", "First", true}, Row{900011, "OTHER_WORD", "Other", false},
          Row{900012, "FIRST_WORD", "Second", false}, Row{900013, "BUY", "No side", false},
          Row{900021, longest + 'x', "too long", false}, Row{900021, longest, anyLength, true},
          Row{900022, "", "", true}, Row{900023, "", "empty again", false}})
    {
        bool const wasTaken = nxEnum::IsRegisteredEnumValue(number);
        EXPECT_EQ(nxAnyEnum::_Register(number, token, text), isEntered) << token;
        EXPECT_EQ(nxEnum::IsRegisteredEnumValue(number), wasTaken || isEntered) << number;
        EXPECT_EQ(ValueOf(token) == number, isEntered) << token;
        EXPECT_EQ(nxAnyEnum(number).GetLongDescription() == text, isEntered) << token;
    }
    EXPECT_FALSE(nxAnyEnum::_Register(0, "ZERO_WORD", "Zero"));
    // A listing goes up to the bound itself, unlike an assignment.
    nxWiderEnum<nxBuySellEnum> wider;
    EXPECT_TRUE(nxAnyEnum::_Register(wider._MaxValue(), "BOUND", "At the bound"));
    std::set<nxEnumValue> rows;
    wider.GetRegisteredEnumValuesForInstance(rows);
    EXPECT_EQ(*rows.rbegin(), wider._MaxValue());
    EXPECT_FALSE(wider.SetFromString("BOUND"));
}

// References into the registry are good for as long as the process lives, whatever is entered later.
TEST(nxEnumRegistration, LeavesReferencesGood)
{
    std::string const& token = nxBuySellEnum(NX_BUY).GetShortDescription();
    char const* const letters = token.data();
    for (unsigned int number = 910000; number < 912000; ++number)
        EXPECT_TRUE(nxAnyEnum::_Register(number, "LATE_" + std::to_string(number), "Late"));
    EXPECT_TRUE(token == "BUY" && token.data() == letters);
    EXPECT_EQ(&nxBuySellEnum(NX_BUY).GetShortDescription(), &token);
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

// Whose rows are made at the first question.
TEST(nxVocabularyCatalogue, CanBeAskedInAChildThatWasForkedDuringTheFirstQuestion)
{
    EXPECT_EQ(CountForksThatMeetTheFirstUse(100, [] { (void)nxVocabularyCatalogue::GetEnumerations(); }), 0);
}
