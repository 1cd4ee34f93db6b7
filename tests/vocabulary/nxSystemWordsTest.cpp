// What the words of applications, messaging, logging, data, functions and screens tell of themselves.

#include "core/vocabulary/nxVocabulary.h"
#include "tests/vocabulary/nxWordsTest.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

TEST(nxApplicationTypeEnum, GroupsTheKindsOfPrograms)
{
    using Type = nxApplicationTypeEnum;
    EXPECT_EQ(Words(&Type::GetShortCode),
              "402=P 403=O 404=OP 410=Prd 411=Prc 412=OPrd 413=RP 414=QPOS 415=MBO 416=DR");
    EXPECT_EQ(WhereTrue(&Type::IsExchangeGateway), "402-404 410-416");
    EXPECT_EQ(WhereTrue(&Type::IsRoutedOnlyGateway), "413");
    EXPECT_EQ(WhereTrue(&Type::HasExchangeProductFunctionality), "402 404 410 412");
    EXPECT_EQ(WhereTrue(&Type::HasExchangeOrderFunctionality), "403-404 412");
    EXPECT_EQ(WhereTrue(&Type::HasExchangePriceFunctionality), "402 404 411 413");
    // From 417 on there are no rows: kinds that are not known.
    EXPECT_EQ(WhereTrue(&Type::IsServer), "401-404 410-416");
    EXPECT_EQ(WhereTrue(&Type::IsClient), "0 2 405-409 417-498");
    EXPECT_EQ(WhereTrue(&Type::RequiresControlledShutdown), "0 2 401-404 409-498");
    EXPECT_EQ(WhereTrue(&Type::RequiresLogFile), "0 2 401-404 409-498");
    EXPECT_EQ(WhereTrue(&Type::RequiresLog), "0 2 401-407 409-498");
    EXPECT_EQ(WhereTrue(&Type::RequiresHeartbeats), "0 2 401-406 410-498");
    EXPECT_EQ(Type(NX_MBO_GATEWAY).GetClientServer(), NX_SERVER);
    EXPECT_EQ(Type().GetClientServer(), NX_CLIENT);
}

TEST(nxSystemWords, States)
{
    EXPECT_EQ(WhereTrue(&nxApplicationStatusEnum::IsShuttingDownOrStopping), "204-206");
    EXPECT_EQ(WhereTrue(&nxClientServerEnum::IsServer), "72");
    EXPECT_EQ(WhereTrue(&nxClientServerEnum::IsClient), "0 2 71");
    EXPECT_EQ(WhereTrue(&nxFTStateEnum::IsActive), "5701");
    EXPECT_EQ(WhereTrue(&nxFIXMessageTypeEnum::IsOrderRelated), "5201-5206");
}

TEST(nxSystemWords, PartsOfASubject)
{
    EXPECT_EQ(Words(&nxMessageTypeEnum::GetShortSubjectName), "51=BX 52=RQ 53=RP 54=RP");
    EXPECT_EQ(Words(&nxMessageRecipientTypeEnum::GetShortSubjectName),
              "0=UN 2=UN 61=CL 62=SRV 63=EX 64=RC 65=LCL 66=LSRV");
    EXPECT_EQ(Words(&nxMessageChannelEnum::GetSubscriptionSubjectSuffix),
              "0=.UNDEFINED 2=.NO_CHANGE 301=.CH0 302=.CH1 303=.CH2 304=.CH3 305=.CH4 306=.CH5 307=.CH6 "
              "308=.CH7 309=.CH8");
    EXPECT_EQ(Words(&nxReplyHandlerTypeEnum::GetSubscriptionSubjectSuffix),
              "0=.UNDEFINED 2=.NO_CHANGE 13601=.SY 13602=.AS");
    EXPECT_EQ(Words(&nxReplyHandlerTypeEnum::GetSyncAsyncTypeStr), "13601=SYNC 13602=ASYNC");

    std::string subject = "PRICE.BX";
    nxMessageChannelEnum(NX_CHANNEL_4).AppendSubscriptionSubjectSuffix(subject);
    nxReplyHandlerTypeEnum(NX_REPLY_HANDLER_TYPE_ASYNC).AppendSubscriptionSubjectSuffix(subject);
    EXPECT_EQ(subject, "PRICE.BX.CH4.AS");
}

TEST(nxSystemWords, Operators)
{
    EXPECT_EQ(Words(&nxComparisonEnum::GetAsOperator), "13501== 13502=!= 13503=> 13504=< 13505=>= 13506=<=");
    EXPECT_EQ(Words(&nxAddOrSubtractEnum::GetAsOperator), "13801=+ 13802=-");
    EXPECT_EQ(Words(&nxUsingEnum::GetAsOperator), "13701=USING TIMESTAMP 13702=USING TTL");
    EXPECT_EQ(Words(&nxDatabaseStatementAggregateEnum::GetAsOperator),
              "13901=COUNT 13902=MAX 13903=MIN 13904=SUM 13905=AVG");
}

TEST(nxLogLevelEnum, CountsFromDebug)
{
    std::map<unsigned int, unsigned int> const levels = {
        {0, NX_DBG},
        {7, NX_FTL},
        {8, NX_UNDEFINED},
        {4294967295u, NX_UNDEFINED},
        {4294967267u, NX_NO_CHANGE}}; // wraps round to its number
    for (auto const& [number, stored] : levels)
    {
        nxLogLevelEnum level(NX_ERR);
        level.SetFromNumericLogLevel(number);
        EXPECT_EQ(level.GetValue(), stored) << number;
    }
}

TEST(nxSystemWords, MasksWithGapsBlanksAndRowsOfSeveralBits)
{
    nxServerCapabilityBitMask mask;
    mask.SetBits(0x40000);
    mask.SetBits(0x8000000000);
    mask.SetBits(0x400000000000);
    EXPECT_EQ(mask.GetShortDescription(","), "???,???,???");
    EXPECT_EQ(nxServerCapabilityBitMask(0x800000000).GetShortDescription(","),
              "NX_SERVER_CAPABILITY_MARGIN_RISK ");
    EXPECT_EQ(nxDatabaseModeBitMask(0x6).GetLongDescription("+"), "threaded+not mutex locked");
    EXPECT_EQ(nxDatabaseModeBitMask().GetLongDescription("+"), "");
    for (unsigned int bits = 0; bits < 8; ++bits)
    {
        nxKeyboardModifierBitMask const keys(bits);
        EXPECT_EQ(keys.IsShiftKeyDown(), (bits & 1) != 0) << bits;
        EXPECT_EQ(keys.IsCtrlKeyDown(), (bits & 2) != 0) << bits;
        EXPECT_EQ(keys.IsAltKeyDown(), (bits & 4) != 0) << bits;
    }
}

TEST(nxFunctionEnum, RightsAndReceipts)
{
    std::set<nxFunctionEnum> functions = {Make<nxFunctionEnum>(199998)};
    nxFunctionEnum().GetAllRegisteredFunctionPermissions(functions);
    EXPECT_EQ(functions.size(), 442u);
    EXPECT_EQ(functions.begin()->GetValue(), 100001u);
    EXPECT_EQ(functions.rbegin()->GetValue(), 103000u);

    // Superusers are granted all but thirty-five.
    EXPECT_EQ(WhereTrue(&nxFunctionEnum::IsPermissionAutomaticallyGrantedToSuperUsers),
              "0 2 100001-100074 100076-100085 100087-100090 100093-100119 100122-100256 100259-100262 "
              "100265-100267 100277-100278 100280-100283 100285-100335 100338-101201 101206 101214 "
              "101216-199998");
    EXPECT_EQ(WhereTrue(&nxFunctionEnum::RequestRequiresReceipt), "0 2 100001-100200 100204-199998");
}

TEST(nxFunctionEnum, SubjectNameIsTheTokenWithoutItsPrefix)
{
    EXPECT_EQ(Make<nxFunctionEnum>(100203).GetAsSubjectName(), "PULL_ORDER");
    EXPECT_EQ(Make<nxFunctionEnum>(101205).GetAsSubjectName(), "UI_KORVANE_PRICE_SHOW_GROUP_fORDERS");
    EXPECT_EQ(Make<nxFunctionEnum>(100033).GetAsSubjectName(), "ED"); // no row: the end of "NOT_REGISTERED"
    for (unsigned int const number : {0u, 2u})
        EXPECT_THROW((void)Make<nxFunctionEnum>(number).GetAsSubjectName(), std::out_of_range);
}

TEST(nxClickTradingActionsEnum, ActionsAreSingleOrCombinedAndUseOneVolume)
{
    using Click = nxClickTradingActionsEnum;
    EXPECT_EQ(WhereTrue(&Click::UsesPrimaryOrderVolume), "0 2 3001-3008 3014-3016 3019-3020");
    EXPECT_EQ(WhereTrue(&Click::UsesSecondaryOrderVolume), "3009-3013 3017-3018 3021-3022");
    EXPECT_EQ(WhereTrue(&Click::UsesThirdOrderVolume), "3023-3030");
    EXPECT_EQ(WhereTrue(&Click::UsesFourthOrderVolume), "3031-3038");
    EXPECT_EQ(WhereTrue(&Click::IsClickJoinMarketAction), "3001 3009 3023 3031");
    EXPECT_EQ(WhereTrue(&Click::IsClickTradeAction), "3002 3010 3024 3032");
    EXPECT_EQ(WhereTrue(&Click::IsShowJoinMarketTicketAction), "3004 3011 3025 3033");
    EXPECT_EQ(WhereTrue(&Click::IsShowTradeTicketAction), "3008 3013 3026 3034");
    EXPECT_EQ(WhereTrue(&Click::IsShowAmendTicketAction), "3014");
    EXPECT_EQ(WhereTrue(&Click::IsClickDimeAction), "3007 3012");
    EXPECT_EQ(WhereTrue(&Click::IsCombinedClickJoinMarketOrPullAction), "3015 3017 3027 3035");
    EXPECT_EQ(WhereTrue(&Click::IsCombinedJoinMarketTicketOrPullAction), "3016 3018 3028 3036");
    EXPECT_EQ(WhereTrue(&Click::IsCombinedClickTradeOrPullAction), "3019 3021 3029 3037");
    EXPECT_EQ(WhereTrue(&Click::IsCombinedTradeTicketOrPullAction), "3020 3022 3030 3038");
}

TEST(nxScreenWords, ATabAndTwoPrefixes)
{
    nxGridDateTimeFormatEnum format(NX_GRID_DATE_TIME_FORMAT_TIME_ONLY);
    EXPECT_FALSE(format.SetFromString("NX_GRID_DATE_TIME_FORMAT_DATE_AND_TIME"));
    EXPECT_EQ(format, NX_GRID_DATE_TIME_FORMAT_TIME_ONLY);
    EXPECT_TRUE(format.SetFromString("NX_GRID_DATE_TIME_FORMAT_DATE_AND_TIME\t"));
    EXPECT_EQ(format.GetValue(), 14102u);

    EXPECT_EQ(nxWorkpaceGroupTypeEnum(NX_WORKSPACE_GROUP_TYPE_HOME).GetDataInstancePrefix(), "Home_");
    EXPECT_EQ(nxWorkpaceGroupTypeEnum(NX_WORKSPACE_GROUP_TYPE_LAPTOP).GetDataInstancePrefix(), "Laptop_");
    EXPECT_EQ(nxWorkpaceGroupTypeEnum(NX_WORKSPACE_GROUP_TYPE_OFFICE).GetDataInstancePrefix(), "");
    EXPECT_EQ(nxWorkpaceGroupTypeEnum().GetDataInstancePrefix(), "");
}
