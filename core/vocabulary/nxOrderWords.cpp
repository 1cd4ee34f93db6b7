#include "core/vocabulary/nxExecutionRestrictionEnum.h"
#include "core/vocabulary/nxMultiLegReportingTypeEnum.h"
#include "core/vocabulary/nxOpenCloseEnum.h"
#include "core/vocabulary/nxOrderStatusEnum.h"
#include "core/vocabulary/nxOrderTransactionFlagsBitMask.h"
#include "core/vocabulary/nxOrderTypeEnum.h"
#include "core/vocabulary/nxPositionTypeEnum.h"
#include "core/vocabulary/nxPrefixedToken.h"
#include "core/vocabulary/nxSyntheticChildOrderTypeEnum.h"
#include "core/vocabulary/nxSyntheticOrderTypeEnum.h"
#include "core/vocabulary/nxSyntheticStrategyLegCalculationPriceTypeEnum.h"
#include "core/vocabulary/nxTimeRestrictionEnum.h"
#include "core/vocabulary/nxTradeTransactionTypeEnum.h"
#include "core/vocabulary/nxTradingCapacityEnum.h"
#include "core/vocabulary/nxTraits.h"

#include <string_view>

// What orders, executions and trades have beside their rows.

namespace
{
struct SyntheticOrderTraits
{
    nxEnumValue row;
    bool canBeParentOfSyntheticSpreadOrders;
    bool canBeShattered;
    bool requiresGroupSubmission;
    bool canParentOrdersBeShown;
    bool canChildOrdersBeShown;
};

constexpr bool yes = true;
constexpr bool no = false;

constexpr SyntheticOrderTraits syntheticOrderTraits[] = {
#define NX_SYNTHETIC_ORDER(...) {__VA_ARGS__},
#include "core/vocabulary/tables/syntheticOrderTraits.def"
};
static_assert(nxTraits::CoversRows(syntheticOrderTraits, NX_SYTNH_ORDER_TYPE_SYNTHETIC,
                                   NX_SYNTHETIC_ORDER_TYPE_TWAP));

// Undefined and "no change".
constexpr SyntheticOrderTraits otherSyntheticOrder = {NX_UNDEFINED, no, no, no, yes, no};

SyntheticOrderTraits const& SyntheticOrderTraitsOf(unsigned int value)
{
    return nxTraits::Of(value, syntheticOrderTraits, otherSyntheticOrder);
}

// Tokens were shortened in places, so the class has several prefixes. The first one belongs to a single row and is
// spelled so.
constexpr std::string_view syntheticOrderPrefixes[] = {
    "NX_SYTNH_ORDER_TYPE_",
    "NX_SYNTH_ORDER_TYPE_",
    "NX_SYNTHETIC_ORDER_TYPE_",
};

template <typename Enumeration>
Enumeration FromEitherPrefix(std::string_view first, std::string_view second, std::string const& word)
{
    Enumeration const value = nxFromPrefixedToken<Enumeration>(first, word);
    return value.IsUndefined() ? nxFromPrefixedToken<Enumeration>(second, word) : value;
}
} // namespace

bool nxOrderTypeEnum::IsWholesaleTrade() const
{
    switch (_value)
    {
    case NX_ORDER_TYPE_BLOCK_TRADE:
    case NX_ORDER_TYPE_GUARANTEED_CROSS:
    case NX_ORDER_TYPE_PROF_TRADE:
    case NX_ORDER_TYPE_BASIS_TRADE:
    case NX_ORDER_TYPE_AGAINST_ACTUAL:
    case NX_ORDER_TYPE_ASSET_ALLOCATION:
    case NX_ORDER_TYPE_EXCHANGE_FOR_SWAP:
    case NX_ORDER_TYPE_EXCHANGE_FOR_PHYSICAL: return true;
    default: return false;
    }
}

nxOrderTypeEnum nxOrderTypeEnum::CreateFromString(std::string const& word)
{
    return nxFromPrefixedToken<nxOrderTypeEnum>("NX_ORDER_TYPE_", word);
}

nxTimeRestrictionEnum nxTimeRestrictionEnum::CreateFromString(std::string const& word)
{
    return FromEitherPrefix<nxTimeRestrictionEnum>("NX_TIME_RESTRICTION_", "NX_TIME_RES_", word);
}

bool nxExecutionRestrictionEnum::IsVariantOfStop() const
{
    return _value == NX_EXECUTION_RESTRICTION_STOP || _value == NX_EXEC_RESTRICTION_TRAIL_STOP;
}

nxExecutionRestrictionEnum nxExecutionRestrictionEnum::CreateFromString(std::string const& word)
{
    return FromEitherPrefix<nxExecutionRestrictionEnum>("NX_EXECUTION_RESTRICTION_", "NX_EXEC_RESTRICTION_",
                                                        word);
}

std::string nxOpenCloseEnum::GetAsCode() const
{
    switch (_value)
    {
    case NX_OPEN: return "O";
    case NX_CLOSE: return "C";
    case NX_CLOSE_TODAY: return "T";
    default: return std::string();
    }
}

bool nxOrderStatusEnum::IsWorkingOrder() const
{
    switch (_value)
    {
    case NX_ORDER_PROCESSING:
    case NX_ORDER_HELD:
    case NX_ORDER_CONFIRMED:
    case NX_ORDER_UNKNOWN:
    case NX_ORDER_STATUS_GATEWAY_HELD: return true;
    default: return false;
    }
}

bool nxOrderStatusEnum::IsWorkingOrderForGUIs() const
{
    return IsWorkingOrder();
}

bool nxSyntheticOrderTypeEnum::CanBeParentOfSyntheticSpreadOrders() const
{
    return SyntheticOrderTraitsOf(_value).canBeParentOfSyntheticSpreadOrders;
}

bool nxSyntheticOrderTypeEnum::CanBeShattered() const
{
    return SyntheticOrderTraitsOf(_value).canBeShattered;
}

bool nxSyntheticOrderTypeEnum::RequiresGroupSubmission() const
{
    return SyntheticOrderTraitsOf(_value).requiresGroupSubmission;
}

bool nxSyntheticOrderTypeEnum::CanParentOrdersBeShownOnPricingScreens() const
{
    return SyntheticOrderTraitsOf(_value).canParentOrdersBeShown;
}

bool nxSyntheticOrderTypeEnum::CanChildOrdersBeShownOnPricingScreens() const
{
    return SyntheticOrderTraitsOf(_value).canChildOrdersBeShown;
}

bool nxSyntheticOrderTypeEnum::IsVariantOfTalvex() const
{
    return _value == NX_SYNTH_ORDER_TYPE_TALVEX || _value == NX_SYNTH_ORDER_TYPE_SIMPLE_TLV;
}

bool nxSyntheticOrderTypeEnum::IsSupportedPassThroughAction(nxEnumValue action) const
{
    return action == NX_FUNCTION_SHATTER_ORDER && CanBeShattered();
}

bool nxSyntheticOrderTypeEnum::GetShortDescriptionSuffix(std::string& suffix) const
{
    std::string const& token = GetShortDescription();
    for (std::string_view const prefix : syntheticOrderPrefixes)
    {
        if (!token.starts_with(prefix))
            continue;
        suffix = token.substr(prefix.size());
        return true;
    }
    return false;
}

bool nxSyntheticChildOrderTypeEnum::IsSpreadWorkingChildOrder() const
{
    return _value == NX_SYNTH_CHILD_WORKING;
}

bool nxSyntheticChildOrderTypeEnum::IsSpreadHedgeChildOrder() const
{
    return _value == NX_SYNTH_CHILD_TAKEOUT || _value == NX_SYNTH_CHILD_HEDGE;
}

bool nxSyntheticChildOrderTypeEnum::SupportsUserAmendments(nxSyntheticOrderTypeEnum const& parent) const
{
    // Of the two forms of Talvex only the full one.
    if (parent != NX_SYNTH_ORDER_TYPE_SPREAD && parent != NX_SYNTH_ORDER_TYPE_TALVEX)
        return false;
    return IsSpreadHedgeChildOrder() || _value == NX_SYNTHETIC_CHILD_ORDER_TYPE_SCRATCH;
}

bool nxSyntheticStrategyLegCalculationPriceTypeEnum::SetFromShortDescriptionStringSuffix(
    std::string const& suffix)
{
    // The token of the default goes on behind this word.
    if (suffix == "LAST")
        return _Set(NX_SYNTHETIC_STRATEGY_LEG_CALCULATION_PRICE_TYPE_LAST_DEFAULT);
    return SetFromShortDescriptionString("NX_SYNTHETIC_STRATEGY_LEG_CALCULATION_PRICE_TYPE_" + suffix);
}

int nxTradeTransactionTypeEnum::GetMultiplier() const
{
    switch (_value)
    {
    case NX_NEW_TRADE:
    case NX_UNDELETE_TRADE:
    case NX_MODIFY_APPLY: return 1;
    case NX_DELETE_TRADE:
    case NX_MODIFY_ROLLBACK: return -1;
    default: return 0;
    }
}

std::string nxTradingCapacityEnum::GetMIFIDCode() const
{
    switch (_value)
    {
    case NX_TRADING_CAPACITY_DEALING_ON_OWN_ACCOUNT: return "DEAL";
    case NX_TRADING_CAPACITY_MATCHED_PRINCIPAL: return "MTCH";
    case NX_TRADING_CAPACITY_ANY_OTHER_CAPACITY: return "AOTC";
    default: return std::string();
    }
}

nxErrorEnum nxMultiLegReportingTypeEnum::GetAsFIXMultiLegReportingType(std::string& code) const
{
    switch (_value)
    {
    case NX_MULTI_LEG_REPORTING_TYPE_SINGLE: code = "1"; return nxErrorEnum();
    case NX_MULTI_LEG_REPORTING_TYPE_INDIVIDUAL_LEG: code = "2"; return nxErrorEnum();
    case NX_MULTI_LEG_REPORTING_TYPE_MULTI_LEG: code = "3"; return nxErrorEnum();
    default: code.clear(); return nxErrorEnum(NX_ERR_INVALID_PARAMETER);
    }
}

nxErrorEnum nxMultiLegReportingTypeEnum::SetFromFIXMultiLegReportingType(std::string const& code)
{
    if (code == "1")
        *this = NX_MULTI_LEG_REPORTING_TYPE_SINGLE;
    else if (code == "2")
        *this = NX_MULTI_LEG_REPORTING_TYPE_INDIVIDUAL_LEG;
    else if (code == "3")
        *this = NX_MULTI_LEG_REPORTING_TYPE_MULTI_LEG;
    else
        Clear();
    return IsUndefined() ? nxErrorEnum(NX_ERR_INVALID_PARAMETER) : nxErrorEnum();
}

nxErrorEnum nxPositionTypeEnum::SetFromSingleCharacterCode(char code)
{
    switch (code)
    {
    case 'R': *this = NX_POSITION_TYPE_REAL; break;
    case 'U': *this = NX_POSITION_TYPE_USER; break;
    default: Clear(); break;
    }
    return nxErrorEnum(); // even when cleared: callers look at the value
}

char nxPositionTypeEnum::GetAsSingleCharacterCode() const
{
    switch (_value)
    {
    case NX_POSITION_TYPE_REAL: return 'R';
    case NX_POSITION_TYPE_USER: return 'U';
    default: return '*';
    }
}

nxOrderTransactionFlagsBitMask nxOrderTransactionFlagsBitMask::GetNoChangeInstance()
{
    return nxOrderTransactionFlagsBitMask(_noChangeBit);
}
