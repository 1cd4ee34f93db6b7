// Results of operations, and the exception that carries one.

#include "core/vocabulary/nxErrorEnum.h"
#include "core/vocabulary/nxException.h"
#include "tests/vocabulary/nxWordsTest.h"

#include <gtest/gtest.h>

#include <exception>
#include <type_traits>

static_assert(!std::is_default_constructible_v<nxException>);
static_assert(!std::is_base_of_v<std::exception, nxException>);
static_assert(std::has_virtual_destructor_v<nxException>);
static_assert(std::is_convertible_v<nxErrorEnum, nxException>);

namespace
{
constexpr auto Error = Make<nxErrorEnum>;
}

TEST(nxErrorEnumSuccess, IsZeroAlone)
{
    EXPECT_TRUE(nxErrorEnum().IsOK());
    EXPECT_EQ(nxErrorEnum().GetAsString(), "UNDEFINED");
    EXPECT_FALSE(nxErrorEnum(NX_NO_CHANGE).IsOK());
    EXPECT_FALSE(nxErrorEnum(NX_ERR_NOT_FOUND).IsOK());
    EXPECT_TRUE(Error(500).IsOK()); // a refused number reads as success

    nxErrorEnum error(NX_ERR_NOT_FOUND);
    error = NX_BUY;
    EXPECT_TRUE(error.IsOK());
}

TEST(nxErrorEnumRows, MayShareAMessageAndAreOfAKindByTheirNumber)
{
    EXPECT_EQ(Error(1000030).GetShortDescription(), "NOT_REGISTERED");
    EXPECT_EQ(Error(1000024).GetLongDescription(), Error(1024000).GetLongDescription());
    EXPECT_NE(Error(1000024), Error(1024000));
    EXPECT_EQ(Error(1005064).GetShortDescription().size(), 64u); // the longest token that is accepted
    EXPECT_EQ(WhereTrue<nxErrorEnum>(&nxErrorEnum::IsTimeout), "1000213-1000214");
    EXPECT_EQ(WhereTrue<nxErrorEnum>(&nxErrorEnum::IsSecurityError), "1001000-1001048");
}

TEST(nxExceptionContent, IsAnErrorAndAText)
{
    nxException exception(nxErrorEnum{NX_ERR_INVALID_PARAMETER});
    EXPECT_EQ(exception.GetError(), NX_ERR_INVALID_PARAMETER);
    EXPECT_EQ(exception.GetDescription(), "");
    exception.GetError() = NX_ERR_NOT_FOUND; // of a copy
    EXPECT_EQ(exception.GetError(), NX_ERR_INVALID_PARAMETER);

    exception.SetError(nxErrorEnum(NX_ERR_NOT_FOUND));
    exception.SetDescription("no such thing");
    nxException copy(nxErrorEnum{});
    EXPECT_EQ(&(copy = exception), &copy);
    EXPECT_EQ(copy.GetError(), NX_ERR_NOT_FOUND);
    nxException const& self = copy;
    copy = self;
    EXPECT_EQ(copy.GetDescription(), "no such thing");

    try
    {
        throw nxException(nxErrorEnum(NX_ERR_INTERNAL), "thrown by value");
    }
    catch (nxException const& caught)
    {
        EXPECT_EQ(caught.GetError(), NX_ERR_INTERNAL);
        EXPECT_EQ(caught.GetDescription(), "thrown by value");
    }
}
