#include "core/vocabulary/nxAddOrSubtractEnum.h"
#include "core/vocabulary/nxApplicationStatusEnum.h"
#include "core/vocabulary/nxApplicationTypeEnum.h"
#include "core/vocabulary/nxClientServerEnum.h"
#include "core/vocabulary/nxComparisonEnum.h"
#include "core/vocabulary/nxDatabaseStatementAggregateEnum.h"
#include "core/vocabulary/nxFIXMessageTypeEnum.h"
#include "core/vocabulary/nxFTStateEnum.h"
#include "core/vocabulary/nxLogLevelEnum.h"
#include "core/vocabulary/nxMessageChannelEnum.h"
#include "core/vocabulary/nxMessageRecipientTypeEnum.h"
#include "core/vocabulary/nxMessageTypeEnum.h"
#include "core/vocabulary/nxReplyHandlerTypeEnum.h"
#include "core/vocabulary/nxTraits.h"
#include "core/vocabulary/nxUsingEnum.h"

// What the words of applications, messaging, logging and data can tell of themselves.

namespace
{
struct ApplicationTraits
{
    nxEnumValue row;
    char const* shortCode;
    bool isExchangeGateway;
    bool handlesProducts;
    bool handlesOrders;
    bool handlesPrices;
    bool isServer;
    bool needsControlledShutdown;
    bool needsLog;
    bool needsHeartbeats;
};

constexpr bool yes = true;
constexpr bool no = false;

constexpr ApplicationTraits applicationTraits[] = {
#define NX_APPLICATION(...) {__VA_ARGS__},
#include "core/vocabulary/tables/applicationTraits.def"
};
static_assert(nxTraits::CoversRows(applicationTraits, NX_APP_SERVER, NX_DR_DROP_COPY));

// A program of unknown kind is a client, and one of the well-behaved ones.
constexpr ApplicationTraits otherApplication = {NX_UNDEFINED, "", no, no, no, no, no, yes, yes, yes};

ApplicationTraits const& ApplicationTraitsOf(unsigned int value)
{
    return nxTraits::Of(value, applicationTraits, otherApplication);
}

// How a subject says that a word is missing.
constexpr char const* undefinedSuffix = ".UNDEFINED";
constexpr char const* noChangeSuffix = ".NO_CHANGE";
} // namespace

std::string nxApplicationTypeEnum::GetShortCode() const
{
    return ApplicationTraitsOf(_value).shortCode;
}

bool nxApplicationTypeEnum::IsExchangeGateway() const
{
    return ApplicationTraitsOf(_value).isExchangeGateway;
}

bool nxApplicationTypeEnum::IsRoutedOnlyGateway() const
{
    return _value == NX_APP_ROUTED_PRICE_ONLY_GATEWAY;
}

bool nxApplicationTypeEnum::HasExchangeProductFunctionality() const
{
    return ApplicationTraitsOf(_value).handlesProducts;
}

bool nxApplicationTypeEnum::HasExchangeOrderFunctionality() const
{
    return ApplicationTraitsOf(_value).handlesOrders;
}

bool nxApplicationTypeEnum::HasExchangePriceFunctionality() const
{
    return ApplicationTraitsOf(_value).handlesPrices;
}

bool nxApplicationTypeEnum::IsServer() const
{
    return ApplicationTraitsOf(_value).isServer;
}

bool nxApplicationTypeEnum::IsClient() const
{
    return !IsServer();
}

nxClientServerEnum nxApplicationTypeEnum::GetClientServer() const
{
    return nxClientServerEnum(IsServer() ? NX_SERVER : NX_CLIENT);
}

bool nxApplicationTypeEnum::RequiresControlledShutdown() const
{
    return ApplicationTraitsOf(_value).needsControlledShutdown;
}

bool nxApplicationTypeEnum::RequiresLogFile() const
{
    return RequiresControlledShutdown();
}

bool nxApplicationTypeEnum::RequiresLog() const
{
    return ApplicationTraitsOf(_value).needsLog;
}

bool nxApplicationTypeEnum::RequiresHeartbeats() const
{
    return ApplicationTraitsOf(_value).needsHeartbeats;
}

bool nxApplicationStatusEnum::IsShuttingDownOrStopping() const
{
    switch (_value)
    {
    case NX_SHUTTING_DOWN:
    case NX_APPLICATION_STATUS_DESTROYING_API:
    case NX_REQ_SHUTDOWN: return true;
    default: return false;
    }
}

bool nxClientServerEnum::IsClient() const
{
    return !IsServer();
}

bool nxClientServerEnum::IsServer() const
{
    return _value == NX_SERVER;
}

bool nxFTStateEnum::IsActive() const
{
    return _value == NX_FT_ACTIVE;
}

void nxLogLevelEnum::SetFromNumericLogLevel(unsigned int level)
{
    // Unsigned, so that a huge number wraps round: what it then hits is taken like any other.
    (void)_Set(NX_DBG + level);
}

std::string nxMessageTypeEnum::GetShortSubjectName() const
{
    switch (_value)
    {
    case NX_BROADCAST: return "BX";
    case NX_REQUEST: return "RQ";
    case NX_RESPONSE:
    case NX_RECEIPT: return "RP";
    default: return std::string();
    }
}

std::string nxMessageRecipientTypeEnum::GetShortSubjectName() const
{
    switch (_value)
    {
    case NX_CL: return "CL";
    case NX_SVR: return "SRV"; // not the token
    case NX_EX: return "EX";
    case NX_RC: return "RC";
    case NX_LCL: return "LCL";
    case NX_LSVR: return "LSRV"; // not the token
    default: return "UN";
    }
}

void nxMessageChannelEnum::AppendSubscriptionSubjectSuffix(std::string& subject) const
{
    switch (_value)
    {
    case NX_UNDEFINED: subject += undefinedSuffix; break;
    case NX_NO_CHANGE: subject += noChangeSuffix; break;
    default: subject.append(".CH").append(std::to_string(_value - NX_CHANNEL_0)); break;
    }
}

std::string nxMessageChannelEnum::GetSubscriptionSubjectSuffix() const
{
    std::string suffix;
    AppendSubscriptionSubjectSuffix(suffix);
    return suffix;
}

std::string nxReplyHandlerTypeEnum::GetSyncAsyncTypeStr() const
{
    switch (_value)
    {
    case NX_REPLY_HANDLER_TYPE_SYNC: return "SYNC";
    case NX_REPLY_HANDLER_TYPE_ASYNC: return "ASYNC";
    default: return std::string();
    }
}

void nxReplyHandlerTypeEnum::AppendSubscriptionSubjectSuffix(std::string& subject) const
{
    switch (_value)
    {
    case NX_REPLY_HANDLER_TYPE_SYNC: subject += ".SY"; break;
    case NX_REPLY_HANDLER_TYPE_ASYNC: subject += ".AS"; break;
    case NX_UNDEFINED: subject += undefinedSuffix; break;
    case NX_NO_CHANGE: subject += noChangeSuffix; break;
    default: subject += ".UNKNOWN"; break;
    }
}

std::string nxReplyHandlerTypeEnum::GetSubscriptionSubjectSuffix() const
{
    std::string suffix;
    AppendSubscriptionSubjectSuffix(suffix);
    return suffix;
}

bool nxFIXMessageTypeEnum::IsOrderRelated() const
{
    switch (_value)
    {
    case NX_FIX_MESSAGE_NEW_ORDER_SINGLE:
    case NX_FIX_MESSAGE_ORDER_CANCEL_REQUEST:
    case NX_FIX_MESSAGE_ORDER_CANCEL_REPLACE_REQUEST:
    case NX_FIX_MESSAGE_ORDER_STATUS_REQUEST:
    case NX_FIX_MESSAGE_ORDER_CANCEL_REJECT:
    case NX_FIX_MESSAGE_ORDER_EXECUTION_REPORT: return true;
    default: return false;
    }
}

std::string nxComparisonEnum::GetAsOperator() const
{
    switch (_value)
    {
    case NX_EQUALS: return "=";
    case NX_NOT_EQUALS: return "!=";
    case NX_GREATER_THAN: return ">";
    case NX_LESS_THAN: return "<";
    case NX_GREATER_THAN_OR_EQUAL: return ">=";
    case NX_LESS_THAN_OR_EQUAL: return "<=";
    default: return std::string();
    }
}

std::string nxAddOrSubtractEnum::GetAsOperator() const
{
    switch (_value)
    {
    case NX_ADD: return "+";
    case NX_SUBTRACT: return "-";
    default: return std::string();
    }
}

std::string nxUsingEnum::GetAsOperator() const
{
    switch (_value)
    {
    case NX_USING_TIMESTAMP: return "USING TIMESTAMP";
    case NX_USING_TTL: return "USING TTL";
    default: return std::string();
    }
}

std::string nxDatabaseStatementAggregateEnum::GetAsOperator() const
{
    switch (_value)
    {
    case NX_COUNT_OF: return "COUNT";
    case NX_MAX_OF: return "MAX";
    case NX_MIN_OF: return "MIN";
    case NX_SUM_OF: return "SUM";
    case NX_AVG_OF: return "AVG";
    default: return std::string();
    }
}
