// What the catalogue of functions tells of its rows.

#include "core/vocabulary/nxFunctionEnum.h"

#include <gtest/gtest.h>

#include <set>
#include <stdexcept>
#include <vector>

namespace
{
nxFunctionEnum Function(unsigned int number)
{
    return nxFunctionEnum(static_cast<nxEnumValue>(number));
}

constexpr unsigned int rowCount = 442;
} // namespace

TEST(nxFunctionEnum, AllPermissionsAreItsRows)
{
    std::set<nxFunctionEnum> functions = {Function(199998)};
    nxFunctionEnum().GetAllRegisteredFunctionPermissions(functions);
    EXPECT_EQ(functions.size(), rowCount);
    EXPECT_EQ(functions.begin()->GetValue(), 100001u);
    EXPECT_EQ(functions.rbegin()->GetValue(), 103000u);

    std::set<nxEnumValue> values;
    nxFunctionEnum().GetRegisteredEnumValuesForInstance(values);
    EXPECT_EQ(values.size(), functions.size());
}

TEST(nxFunctionEnum, SuperUsersAreGrantedAllButThirtyFive)
{
    std::vector<unsigned int> const oneByOne = {
        100075, 100086, 100091, 100092, 100120, 100121, 100257, 100258, 100263, 100264, 100268, 100269,
        100270, 100271, 100272, 100273, 100274, 100275, 100276, 100279, 100284, 100336, 100337, 101202,
        101203, 101204, 101205, 101207, 101208, 101209, 101210, 101211, 101212, 101213, 101215,
    };
    std::vector<unsigned int> refused;
    for (unsigned int number = 100001; number <= 103001; ++number)
        if (!Function(number).IsPermissionAutomaticallyGrantedToSuperUsers())
            refused.push_back(number);
    EXPECT_EQ(refused, oneByOne);
    EXPECT_TRUE(Function(NX_UNDEFINED).IsPermissionAutomaticallyGrantedToSuperUsers());
    EXPECT_TRUE(Function(NX_NO_CHANGE).IsPermissionAutomaticallyGrantedToSuperUsers());
}

TEST(nxFunctionEnum, OrdersGoWithoutAReceipt)
{
    std::vector<unsigned int> without;
    for (unsigned int number = 100001; number <= 103001; ++number)
        if (!Function(number).RequestRequiresReceipt())
            without.push_back(number);
    EXPECT_EQ(without, (std::vector<unsigned int>{100201, 100202, 100203}));
    EXPECT_TRUE(Function(NX_UNDEFINED).RequestRequiresReceipt());
    EXPECT_TRUE(Function(NX_NO_CHANGE).RequestRequiresReceipt());
}

TEST(nxFunctionEnum, SubjectNameIsTheTokenWithoutItsPrefix)
{
    EXPECT_EQ(Function(100203).GetAsSubjectName(), "PULL_ORDER");
    EXPECT_EQ(Function(101205).GetAsSubjectName(), "UI_KORVANE_PRICE_SHOW_GROUP_fORDERS");
    EXPECT_EQ(Function(100033).GetAsSubjectName(), "ED"); // no row: the end of "NOT_REGISTERED"
    EXPECT_THROW((void)Function(NX_UNDEFINED).GetAsSubjectName(), std::out_of_range);
    EXPECT_THROW((void)Function(NX_NO_CHANGE).GetAsSubjectName(), std::out_of_range);
}
