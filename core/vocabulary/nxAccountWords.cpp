#include "core/vocabulary/nxAccountNodeDefinitionFieldsBitMask.h"
#include "core/vocabulary/nxAccountNodeFlagBitMask.h"
#include "core/vocabulary/nxAccountNodeStateEnum.h"
#include "core/vocabulary/nxBitMaskRows.h"
#include "core/vocabulary/nxDataActiveStatusEnum.h"
#include "core/vocabulary/nxLimitAccountStateEnum.h"
#include "core/vocabulary/nxPandLDataPeriodEnum.h"
#include "core/vocabulary/nxSecurityNodeAccessBaseBitMask.h"
#include "core/vocabulary/nxUserNodeStateEnum.h"

// What accounts, users and their limits have beside their rows.

namespace
{
// The flags of an account, and the fields of its definition that carry them.
constexpr unsigned long long exchangeFlag =
    nxBitsOf(nxAccountNodeFlagBitMaskRows, "GENERATE_EXCHANGE_STRATEGY_POSITIONS");
constexpr unsigned long long syntheticFlag =
    nxBitsOf(nxAccountNodeFlagBitMaskRows, "GENERATE_SYNTHETIC_STRATEGY_POSITIONS");
constexpr unsigned long long exchangeField =
    nxBitsOf(nxAccountNodeDefinitionFieldsBitMaskRows,
             "ACCOUNT_NODE_DEFINITION_FIELD_GENERATE_EXCHANGE_STRATEGY_POSITIONS");
constexpr unsigned long long syntheticField =
    nxBitsOf(nxAccountNodeDefinitionFieldsBitMaskRows,
             "ACCOUNT_NODE_DEFINITION_FIELD_GENERATE_SYNTHETIC_STRATEGY_POSITIONS");

unsigned long long FlagsOf(nxAccountNodeDefinitionFieldsBitMask const& fields)
{
    unsigned long long flags = 0;
    if (fields.AreAnyBitsSet(exchangeField))
        flags |= exchangeFlag;
    if (fields.AreAnyBitsSet(syntheticField))
        flags |= syntheticFlag;
    return flags;
}

constexpr unsigned int accessRights = nxBitsOf(nxSecurityNodeAccessBaseBitMaskRows, "Full");
} // namespace

std::string nxAccountNodeStateEnum::GetAsLogString() const
{
    switch (_value)
    {
    case NX_ACCOUNT_NODE_STATE_ACTIVE: return "ACTIVE";
    case NX_ACCOUNT_NODE_STATE_DELETED: return "DELETED";
    case NX_UNDEFINED: return "UNDEFINED";
    case NX_NO_CHANGE: return "NO_CHANGE";
    default: return "NOT_RECOGNISED";
    }
}

std::string nxUserNodeStateEnum::GetAsLogString() const
{
    switch (_value)
    {
    case NX_USER_NODE_STATE_ACTIVE: return "ACTIVE";
    case NX_USER_NODE_STATE_DISABLED: return "DISABLED";
    case NX_USER_NODE_STATE_DELETED: return "DELETED";
    case NX_UNDEFINED: return "UNDEFINED";
    case NX_NO_CHANGE: return "NO_CHANGE";
    default: return "NOT_RECOGNISED";
    }
}

std::string nxDataActiveStatusEnum::GetIndexedMapTail() const
{
    switch (_value)
    {
    case NX_STATUS_ACTIVE:
    case NX_STATUS_INACTIVE: return '.' + GetShortDescription();
    default: return ".*";
    }
}

std::string nxPandLDataPeriodEnum::GetSubscriptionSubjectDescription() const
{
    switch (_value)
    {
    case NX_PANDL_DATA_PERIOD_MINUTE: return "MIN";
    case NX_PANDL_DATA_PERIOD_5_MINUTE: return "5MIN";
    case NX_PANDL_DATA_PERIOD_15_MINUTE: return "15MIN";
    case NX_PANDL_DATA_PERIOD_HOUR: return "HOUR";
    case NX_PANDL_DATA_PERIOD_DAILY: return "DAILY";
    case NX_PANDL_DATA_PERIOD_WEEK: return "WEEK";
    default: return GetShortDescription();
    }
}

bool nxLimitAccountStateEnum::IsWorse(nxLimitAccountStateEnum const& other) const
{
    // The numbers from active to disabled rise with the severity.
    return _value >= NX_ACCOUNT_STATE_ACTIVE && _LessThan(other) && other._value <= NX_ACCOUNT_STATE_DISABLED;
}

bool nxLimitAccountStateEnum::SetIfWorse(nxLimitAccountStateEnum const& other)
{
    if (!IsWorse(other))
        return false;
    (void)_Set(other);
    return true;
}

nxErrorEnum nxLimitAccountStateEnum::GetEquivalentError() const
{
    switch (_value)
    {
    case NX_ACCOUNT_STATE_AWAITING_DATA: return nxErrorEnum(NX_ERR_LIMIT_ACCOUNT_NOT_READY);
    case NX_ACCOUNT_STATE_RESTRICTED: return nxErrorEnum(NX_ERR_LIMIT_ACCOUNT_RESTRICTED);
    case NX_ACCOUNT_STATE_DISABLED: return nxErrorEnum(NX_ERR_LIMIT_ACCOUNT_DISABLED);
    default: return nxErrorEnum();
    }
}

bool nxSecurityNodeAccessBaseBitMask::IsValid() const
{
    return _value <= accessRights;
}

bool nxAccountNodeFlagBitMask::GetGenerateExchangeStrategyPositions() const
{
    return AreAllBitsSet(exchangeFlag);
}

bool nxAccountNodeFlagBitMask::GetGenerateSyntheticStrategyPositions() const
{
    return AreAllBitsSet(syntheticFlag);
}

void nxAccountNodeFlagBitMask::SetGenerateExchangeStrategyPositions(bool generate)
{
    if (generate)
        SetBits(exchangeFlag);
    else
        ClearBits(exchangeFlag);
}

void nxAccountNodeFlagBitMask::SetGenerateSyntheticStrategyPositions(bool generate)
{
    if (generate)
        SetBits(syntheticFlag);
    else
        ClearBits(syntheticFlag);
}

void nxAccountNodeFlagBitMask::ConvertToAccountNodeDefinitionFieldsBitMask(
    nxAccountNodeDefinitionFieldsBitMask& fields) const
{
    fields.Clear();
    if (GetGenerateExchangeStrategyPositions())
        fields.SetBits(exchangeField);
    if (GetGenerateSyntheticStrategyPositions())
        fields.SetBits(syntheticField);
}

void nxAccountNodeFlagBitMask::ConvertFromAccountNodeDefinitionFieldsBitMask(
    nxAccountNodeDefinitionFieldsBitMask const& fields)
{
    Clear();
    SetBits(FlagsOf(fields));
}

void nxAccountNodeFlagBitMask::MergeFromAccountNodeFlagsBitMaskUsingPresenceFieldsBitMask(
    nxAccountNodeFlagBitMask const& other, nxAccountNodeDefinitionFieldsBitMask const& presence)
{
    unsigned long long const present = FlagsOf(presence);
    unsigned long long const taken = other.GetValue() & present; // other may be this very mask
    ClearBits(present);
    SetBits(taken); // even when nothing is present: it makes a mask valid again
}
