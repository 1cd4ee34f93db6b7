#include "Facts.h"

#include "core/vocabulary/nxVocabulary.h"

#include <string>

namespace nxTool
{
namespace
{
/// A question to a class, and how it is asked of one of its numbers.
struct Question
{
    std::string (*className)();
    char const* key;
    char const* title;
    Cell (*ask)(unsigned int number);
};

Cell CellOf(bool answer)
{
    return Cell(answer);
}
Cell CellOf(char answer)
{
    return answer == ' ' ? Cell("") : Cell(std::string(1, answer)); // a blank means: no code
}
Cell CellOf(nxEnum const& answer)
{
    return Cell(answer.GetAsString());
}
Cell CellOf(std::string const& answer)
{
    return Cell(answer);
}
Cell CellOf(unsigned int answer)
{
    return Cell(answer);
}
Cell CellOf(int answer)
{
    return Cell(answer);
}

template <typename Enumeration, typename Answer>
Enumeration ClassOf(Answer (Enumeration::*)() const);

/// @tparam operation  a pointer to the operation that answers; its class is the one that is asked. The base's operations
///                    need the class by name.
template <auto operation, typename Enumeration = decltype(ClassOf(operation))>
constexpr Question About(char const* key, char const* title)
{
    return {[] { return Enumeration().GetClassNameA(); }, key, title,
            [](unsigned int number)
            { return CellOf((Enumeration(static_cast<nxEnumValue>(number)).*operation)()); }};
}

using Click = nxClickTradingActionsEnum;
using Application = nxApplicationTypeEnum;
using Synthetic = nxSyntheticOrderTypeEnum;

constexpr Question questions[] = {
    About<&nxEnum::IsTimeout, nxErrorEnum>("timeout", "timeout"),
    About<&nxEnum::IsSecurityError, nxErrorEnum>("security", "security"),

    About<&nxFunctionEnum::IsPermissionAutomaticallyGrantedToSuperUsers>("grantedToSuperUsers",
                                                                         "granted to super users"),
    About<&nxFunctionEnum::RequestRequiresReceipt>("requiresReceipt", "requires receipt"),
    About<&nxFunctionEnum::GetAsSubjectName>("subjectName", "subject name"),

    About<&nxOrderStatusEnum::IsWorkingOrder>("working", "working"),
    About<&nxOrderStatusEnum::IsWorkingOrderForGUIs>("workingForScreens", "working for screens"),
    About<&nxOrderTypeEnum::IsWholesaleTrade>("wholesale", "wholesale"),
    About<&nxExecutionRestrictionEnum::IsVariantOfStop>("stop", "kind of stop"),
    About<&nxOpenCloseEnum::GetAsCode>("code", "code"),
    About<&nxBuySellEnum::GetAsSingleCharacterCode>("code", "code"),
    About<&nxBuySellEnum::GetSignString>("sign", "sign"),
    About<&nxPositionTypeEnum::GetAsSingleCharacterCode>("code", "code"),
    About<&nxTradeTransactionTypeEnum::GetMultiplier>("multiplier", "multiplier"),
    About<&nxTradingCapacityEnum::GetMIFIDCode>("mifidCode", "MIFID code"),
    About<&Synthetic::CanBeParentOfSyntheticSpreadOrders>("parentOfSpreads", "parent of spreads"),
    About<&Synthetic::CanBeShattered>("shatters", "can be shattered"),
    About<&Synthetic::RequiresGroupSubmission>("groupSubmission", "group submission"),
    About<&Synthetic::CanParentOrdersBeShownOnPricingScreens>("parentShown", "parent on price screens"),
    About<&Synthetic::CanChildOrdersBeShownOnPricingScreens>("childShown", "child on price screens"),
    About<&Synthetic::IsVariantOfTalvex>("talvex", "kind of Talvex"),
    About<&nxSyntheticChildOrderTypeEnum::IsSpreadWorkingChildOrder>("workingChild", "working leg"),
    About<&nxSyntheticChildOrderTypeEnum::IsSpreadHedgeChildOrder>("hedgeChild", "hedge leg"),

    About<&nxProductTypeEnum::GetAsCode>("code", "code"),
    About<&nxCallPutEnum::GetAsSingleCharacterCode>("code", "code"),
    About<&nxProductNamingMethodEnum::RequiresProductDefinition>("requiresDefinition", "requires definition"),
    About<&nxStrategyTypeEnum::IsVolStrategy>("volatility", "volatility strategy"),
    About<&nxTickDataPeriodEnum::IsActualScheduleBased>("actualSchedule", "by actual schedule"),
    About<&nxTickDataPeriodEnum::IsVolumeBased>("volumeBased", "by volume"),
    About<&nxTickDataPeriodEnum::GetSubscriptionSubjectDescription>("subject", "subject"),
    About<&nxPandLDataPeriodEnum::GetSubscriptionSubjectDescription>("subject", "subject"),
    About<&nxMonthEnum::GetAsMonthNumber>("month", "month"),
    About<&nxMonthEnum::GetAs3DigitString>("shortName", "short name"),

    About<&nxLimitAccountStateEnum::GetEquivalentError>("error", "equivalent error"),
    About<&nxAccountNodeStateEnum::GetAsLogString>("logString", "in the log"),
    About<&nxUserNodeStateEnum::GetAsLogString>("logString", "in the log"),

    About<&Application::GetShortCode>("shortCode", "short code"),
    About<&Application::GetClientServer>("side", "side"),
    About<&Application::IsExchangeGateway>("exchangeGateway", "exchange gateway"),
    About<&Application::IsRoutedOnlyGateway>("routedOnly", "routed only"),
    About<&Application::HasExchangeProductFunctionality>("products", "products"),
    About<&Application::HasExchangeOrderFunctionality>("orders", "orders"),
    About<&Application::HasExchangePriceFunctionality>("prices", "prices"),
    About<&Application::RequiresControlledShutdown>("controlledShutdown", "controlled shutdown"),
    About<&Application::RequiresLog>("log", "log"),
    About<&Application::RequiresLogFile>("logFile", "log file"),
    About<&Application::RequiresHeartbeats>("heartbeats", "heartbeats"),
    About<&nxApplicationStatusEnum::IsShuttingDownOrStopping>("stopping", "shutting down"),
    About<&nxClientServerEnum::IsServer>("server", "server"),
    About<&nxFTStateEnum::IsActive>("active", "active"),
    About<&nxMessageTypeEnum::GetShortSubjectName>("subjectName", "subject name"),
    About<&nxMessageRecipientTypeEnum::GetShortSubjectName>("subjectName", "subject name"),
    About<&nxMessageChannelEnum::GetSubscriptionSubjectSuffix>("subjectSuffix", "subject suffix"),
    About<&nxReplyHandlerTypeEnum::GetSubscriptionSubjectSuffix>("subjectSuffix", "subject suffix"),
    About<&nxFIXMessageTypeEnum::IsOrderRelated>("orderRelated", "about orders"),
    About<&nxComparisonEnum::GetAsOperator>("operator", "operator"),
    About<&nxAddOrSubtractEnum::GetAsOperator>("operator", "operator"),
    About<&nxUsingEnum::GetAsOperator>("operator", "operator"),
    About<&nxDatabaseStatementAggregateEnum::GetAsOperator>("operator", "operator"),

    About<&Click::UsesPrimaryOrderVolume>("primaryVolume", "primary volume"),
    About<&Click::UsesSecondaryOrderVolume>("secondaryVolume", "secondary volume"),
    About<&Click::UsesThirdOrderVolume>("thirdVolume", "third volume"),
    About<&Click::UsesFourthOrderVolume>("fourthVolume", "fourth volume"),
    About<&Click::IsClickJoinMarketAction>("join", "join market"),
    About<&Click::IsClickTradeAction>("trade", "trade"),
    About<&Click::IsClickDimeAction>("dime", "dime"),
    About<&Click::IsShowJoinMarketTicketAction>("joinTicket", "join market ticket"),
    About<&Click::IsShowTradeTicketAction>("tradeTicket", "trade ticket"),
    About<&Click::IsShowAmendTicketAction>("amendTicket", "amend ticket"),
    About<&Click::IsCombinedClickJoinMarketOrPullAction>("joinOrPull", "join market or pull"),
    About<&Click::IsCombinedJoinMarketTicketOrPullAction>("joinTicketOrPull", "join market ticket or pull"),
    About<&Click::IsCombinedClickTradeOrPullAction>("tradeOrPull", "trade or pull"),
    About<&Click::IsCombinedTradeTicketOrPullAction>("tradeTicketOrPull", "trade ticket or pull"),
    About<&nxWorkpaceGroupTypeEnum::GetDataInstancePrefix>("prefix", "data prefix"),
};
} // namespace

std::vector<Field> FactsOf(std::string_view className, unsigned int number)
{
    std::vector<Field> facts;
    for (Question const& question : questions)
        if (question.className() == className)
            facts.push_back({question.key, question.title, question.ask(number)});
    return facts;
}
} // namespace nxTool
