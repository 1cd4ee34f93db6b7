// What the words of applications, messaging, logging and data tell of themselves.

#include "core/vocabulary/nxAddOrSubtractEnum.h"
#include "core/vocabulary/nxApplicationStatusEnum.h"
#include "core/vocabulary/nxApplicationTypeEnum.h"
#include "core/vocabulary/nxClientServerEnum.h"
#include "core/vocabulary/nxComparisonEnum.h"
#include "core/vocabulary/nxDatabaseModeBitMask.h"
#include "core/vocabulary/nxDatabaseStatementAggregateEnum.h"
#include "core/vocabulary/nxFIXMessageTypeEnum.h"
#include "core/vocabulary/nxFTStateEnum.h"
#include "core/vocabulary/nxLogLevelEnum.h"
#include "core/vocabulary/nxMessageChannelEnum.h"
#include "core/vocabulary/nxMessageRecipientTypeEnum.h"
#include "core/vocabulary/nxMessageTypeEnum.h"
#include "core/vocabulary/nxReplyHandlerTypeEnum.h"
#include "core/vocabulary/nxServerCapabilityBitMask.h"
#include "core/vocabulary/nxUsingEnum.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{
/// The numbers of the closed interval for which the predicate holds, 0 and 2 being tried too.
template <typename Enumeration>
std::vector<unsigned int> WhereTrue(bool (Enumeration::*predicate)() const, unsigned int first,
                                    unsigned int last)
{
    std::vector<unsigned int> numbers;
    auto const tryNumber = [&](unsigned int number)
    {
        if ((Enumeration(static_cast<nxEnumValue>(number)).*predicate)())
            numbers.push_back(number);
    };
    tryNumber(NX_UNDEFINED);
    tryNumber(NX_NO_CHANGE);
    for (unsigned int number = first; number <= last; ++number)
        tryNumber(number);
    return numbers;
}

std::vector<unsigned int> Applications(bool (nxApplicationTypeEnum::*predicate)() const)
{
    // The last one has no row: a kind that is not known.
    return WhereTrue(predicate, 401, 417);
}

using Numbers = std::vector<unsigned int>;

/// A number of a class and the word that an operation makes of it.
struct Word
{
    unsigned int number;
    char const* word;
};

template <typename Enumeration, std::size_t count>
void ExpectWords(std::string (Enumeration::*operation)() const, Word const (&words)[count])
{
    for (Word const& row : words)
        EXPECT_EQ((Enumeration(static_cast<nxEnumValue>(row.number)).*operation)(), row.word) << row.number;
}
} // namespace

TEST(nxApplicationTypeEnum, ShortCodesNameTheGateways)
{
    static constexpr Word codes[] = {
        {0, ""},     {2, ""},       {401, ""},    {402, "P"},  {403, "O"},   {404, "OP"},  {405, ""},
        {406, ""},   {407, ""},     {408, ""},    {409, ""},   {410, "Prd"}, {411, "Prc"}, {412, "OPrd"},
        {413, "RP"}, {414, "QPOS"}, {415, "MBO"}, {416, "DR"}, {417, ""},    {498, ""},
    };
    ExpectWords(&nxApplicationTypeEnum::GetShortCode, codes);
}

TEST(nxApplicationTypeEnum, WhatAGatewayHandles)
{
    using Type = nxApplicationTypeEnum;
    Numbers const gateways = {402, 403, 404, 410, 411, 412, 413, 414, 415, 416};
    EXPECT_EQ(Applications(&Type::IsExchangeGateway), gateways);
    EXPECT_EQ(Applications(&Type::IsRoutedOnlyGateway), Numbers{413});
    EXPECT_EQ(Applications(&Type::HasExchangeProductFunctionality), (Numbers{402, 404, 410, 412}));
    EXPECT_EQ(Applications(&Type::HasExchangeOrderFunctionality), (Numbers{403, 404, 412}));
    EXPECT_EQ(Applications(&Type::HasExchangePriceFunctionality), (Numbers{402, 404, 411, 413}));
}

TEST(nxApplicationTypeEnum, EverythingUnknownIsAClient)
{
    using Type = nxApplicationTypeEnum;
    EXPECT_EQ(Applications(&Type::IsServer),
              (Numbers{401, 402, 403, 404, 410, 411, 412, 413, 414, 415, 416}));
    EXPECT_EQ(Applications(&Type::IsClient), (Numbers{0, 2, 405, 406, 407, 408, 409, 417}));
    EXPECT_EQ(Type(NX_MBO_GATEWAY).GetClientServer(), NX_SERVER);
    EXPECT_EQ(Type(NX_APP_GUI).GetClientServer(), NX_CLIENT);
    EXPECT_EQ(Type().GetClientServer(), NX_CLIENT);
}

TEST(nxApplicationTypeEnum, WhatAProgramOwesThePlatform)
{
    using Type = nxApplicationTypeEnum;
    Numbers const controlled = {0, 2, 401, 402, 403, 404, 409, 410, 411, 412, 413, 414, 415, 416, 417};
    EXPECT_EQ(Applications(&Type::RequiresControlledShutdown), controlled);
    EXPECT_EQ(Applications(&Type::RequiresLogFile), controlled);
    EXPECT_EQ(Applications(&Type::RequiresLog), (Numbers{0, 2, 401, 402, 403, 404, 405, 406, 407, 409, 410,
                                                         411, 412, 413, 414, 415, 416, 417}));
    EXPECT_EQ(Applications(&Type::RequiresHeartbeats),
              (Numbers{0, 2, 401, 402, 403, 404, 405, 406, 410, 411, 412, 413, 414, 415, 416, 417}));
}

TEST(nxSystemWords, States)
{
    EXPECT_EQ(WhereTrue(&nxApplicationStatusEnum::IsShuttingDownOrStopping, 201, 208),
              (Numbers{204, 205, 206}));
    EXPECT_EQ(WhereTrue(&nxClientServerEnum::IsServer, 71, 72), Numbers{72});
    EXPECT_EQ(WhereTrue(&nxClientServerEnum::IsClient, 71, 72), (Numbers{0, 2, 71}));
    EXPECT_EQ(WhereTrue(&nxFTStateEnum::IsActive, 5701, 5702), Numbers{5701});
    EXPECT_EQ(WhereTrue(&nxFIXMessageTypeEnum::IsOrderRelated, 5201, 5213),
              (Numbers{5201, 5202, 5203, 5204, 5205, 5206}));
}

TEST(nxLogLevelEnum, CountsFromDebug)
{
    constexpr struct
    {
        unsigned int level;
        unsigned int number;
    } rows[] = {
        {0, NX_DBG},
        {7, NX_FTL},
        {8, NX_UNDEFINED},
        {4294967295u, NX_UNDEFINED},
        {4294967267u, NX_NO_CHANGE}, // wraps round to the number of "no change"
    };
    for (auto const& row : rows)
    {
        nxLogLevelEnum level(NX_ERR);
        level.SetFromNumericLogLevel(row.level);
        EXPECT_EQ(level.GetValue(), row.number) << row.level;
    }
}

TEST(nxSystemWords, PartsOfASubject)
{
    static constexpr Word types[] = {{0, ""}, {2, ""}, {51, "BX"}, {52, "RQ"}, {53, "RP"}, {54, "RP"}};
    ExpectWords(&nxMessageTypeEnum::GetShortSubjectName, types);

    static constexpr Word recipients[] = {{0, "UN"},  {2, "UN"},  {61, "CL"},  {62, "SRV"},
                                          {63, "EX"}, {64, "RC"}, {65, "LCL"}, {66, "LSRV"}};
    ExpectWords(&nxMessageRecipientTypeEnum::GetShortSubjectName, recipients);

    static constexpr Word channels[] = {
        {0, ".UNDEFINED"}, {2, ".NO_CHANGE"}, {301, ".CH0"}, {307, ".CH6"}, {309, ".CH8"}};
    ExpectWords(&nxMessageChannelEnum::GetSubscriptionSubjectSuffix, channels);

    static constexpr Word handlers[] = {{0, ".UNDEFINED"}, {2, ".NO_CHANGE"}, {13601, ".SY"}, {13602, ".AS"}};
    ExpectWords(&nxReplyHandlerTypeEnum::GetSubscriptionSubjectSuffix, handlers);

    static constexpr Word kinds[] = {{0, ""}, {2, ""}, {13601, "SYNC"}, {13602, "ASYNC"}};
    ExpectWords(&nxReplyHandlerTypeEnum::GetSyncAsyncTypeStr, kinds);
}

TEST(nxSystemWords, SuffixesAreAppended)
{
    std::string subject = "PRICE.BX";
    nxMessageChannelEnum(NX_CHANNEL_4).AppendSubscriptionSubjectSuffix(subject);
    nxReplyHandlerTypeEnum(NX_REPLY_HANDLER_TYPE_ASYNC).AppendSubscriptionSubjectSuffix(subject);
    EXPECT_EQ(subject, "PRICE.BX.CH4.AS");
}

TEST(nxSystemWords, Operators)
{
    static constexpr Word comparisons[] = {{0, ""},      {2, ""},      {13501, "="},  {13502, "!="},
                                           {13503, ">"}, {13504, "<"}, {13505, ">="}, {13506, "<="}};
    ExpectWords(&nxComparisonEnum::GetAsOperator, comparisons);

    static constexpr Word signs[] = {{0, ""}, {2, ""}, {13801, "+"}, {13802, "-"}};
    ExpectWords(&nxAddOrSubtractEnum::GetAsOperator, signs);

    static constexpr Word clauses[] = {{0, ""}, {2, ""}, {13701, "USING TIMESTAMP"}, {13702, "USING TTL"}};
    ExpectWords(&nxUsingEnum::GetAsOperator, clauses);

    static constexpr Word aggregates[] = {{0, ""},        {2, ""},        {13901, "COUNT"}, {13902, "MAX"},
                                          {13903, "MIN"}, {13904, "SUM"}, {13905, "AVG"}};
    ExpectWords(&nxDatabaseStatementAggregateEnum::GetAsOperator, aggregates);
}

TEST(nxServerCapabilityBitMask, KeepsItsGapsAndItsBlank)
{
    nxServerCapabilityBitMask mask;
    mask.SetBits(0x40000);
    mask.SetBits(0x8000000000);
    mask.SetBits(0x400000000000);
    EXPECT_EQ(mask.GetShortDescription(","), "???,???,???");
    EXPECT_EQ(nxServerCapabilityBitMask(0x800000000).GetShortDescription(","),
              "NX_SERVER_CAPABILITY_MARGIN_RISK ");
}

TEST(nxDatabaseModeBitMask, RowsOfSeveralBitsNeverPrint)
{
    EXPECT_EQ(nxDatabaseModeBitMask(0x6).GetLongDescription("+"), "threaded+not mutex locked");
    EXPECT_EQ(nxDatabaseModeBitMask().GetLongDescription("+"), "");
}
