// What the words of an enumeration must not cost: memory, whichever way they are asked for.
#include "core/text/nxStringHelper.h"
#include "core/vocabulary/nxBuySellEnum.h"
#include "core/vocabulary/nxErrorEnum.h"
#include "tests/prices/nxAllocationCount.h"

#include <gtest/gtest.h>

TEST(nxEnumCost, NoMemory)
{
    std::string const token = "NX_ERR_INVALID_PARAMETER";
    std::string const unknown = "NX_ERR_THAT_THERE_IS_NOT";
    std::string out;
    out.reserve(64);
    nxErrorEnum error(NX_ERR_INVALID_PARAMETER);

    nxAllocationCount const count;
    std::size_t const size = error.GetShortDescription().size() + error.GetLongDescription().size() +
                             nxBuySellEnum().GetAsString().size();
    bool const isKnown = error.SetFromString(token);
    bool const isUnknown = !error.SetFromString(unknown);
    nxStringHelper::AppendAsString(out, error);
    EXPECT_EQ(count.Get(), 0u);
    EXPECT_TRUE(isKnown && isUnknown && size != 0);
    EXPECT_EQ(out, token);
}
