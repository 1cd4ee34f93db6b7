#include "core/vocabulary/nxAsciiLetters.h"
#include "core/vocabulary/nxBitMaskRows.h"
#include "core/vocabulary/nxCallPutEnum.h"
#include "core/vocabulary/nxDayOfWeekEnum.h"
#include "core/vocabulary/nxEnumWords.h"
#include "core/vocabulary/nxMonthEnum.h"
#include "core/vocabulary/nxPrefixedToken.h"
#include "core/vocabulary/nxProductIDFieldEnum.h"
#include "core/vocabulary/nxProductNamingMethodEnum.h"
#include "core/vocabulary/nxProductStateBitMask.h"
#include "core/vocabulary/nxProductTypeEnum.h"
#include "core/vocabulary/nxStrategyTypeEnum.h"
#include "core/vocabulary/nxTickDataPeriodEnum.h"
#include "core/vocabulary/nxTradingSessionTypeEnum.h"

#include <string_view>

// What products, their markets and the calendar have beside their rows.

namespace
{
struct ProductCode
{
    nxEnumValue type;
    char const* code;
};

constexpr ProductCode productCodes[] = {
    {NX_WARRANT, "W"}, {NX_FORWARD, "FWD"}, {NX_NDF, "NDF"},    {NX_EQUITY, "E"}, {NX_FUTURE, "F"},
    {NX_OPTION, "O"},  {NX_STRATEGY, "S"},  {NX_CURRENCY, "C"}, {NX_BOND, "B"},
};

constexpr std::size_t monthNameLength = 3;

/// An exchange's word for a state of the market.
struct StateWord
{
    std::string_view word;
    unsigned int state;
};

/// The bit of the state that has the token.
consteval unsigned long long State(std::string_view token)
{
    return nxBitsOf(nxProductStateBitMaskRows, token);
}

constexpr StateWord stateWords[] = {
    {"PREOPEN", State("PREOPEN")},
    {"PREOPENING", State("PREOPEN")},
    {"PRE_TRADING", State("PREOPEN")},
    {"OPEN", State("OPEN")},
    {"CONTINUOUS_TRADING", State("OPEN")},
    {"NORMAL", State("OPEN")},
    {"TRADING", State("OPEN")},
    {"RET_TRADING", State("OPEN")},
    {"PRECLOSED", State("PRECLOSED")},
    {"CLOSED", State("CLOSED")},
    {"HOLIDAY", State("CLOSED")},
    {"INACTIVE", State("CLOSED")},
    {"NO_CANCEL", State("NO_CANCEL")},
    {"PRICE_LIMITS_ENABLED", State("PRICE_LIMITS")},
    {"PRICE_FAST", State("FAST")},
    {"START_FAST", State("FAST")},
    {"RESTRICTED_OPEN", State("RESTRICTED_OPEN")},
    {"UNAVAILABLE", State("UNAVAILABLE")},
    {"START_OF_CONSULTATION", State("START_OF_CONSULTATION")},
    {"STRESSED", State("STRESSED")},
    {"INTERVENTION_BEFORE_OPENING", State("INTERVENTION_BEFORE_OPENING")},
    {"MINI_BATCH", State("MINI_BATCH")},
    {"SURVEILLANCE_INTERVENTION", State("SURVEILLANCE_INTERVENTION")},
    {"END_OF_CONSULTATION", State("END_OF_CONSULTATION")},
    {"FORBIDDEN", State("FORBIDDEN")},
    {"INTERRUPTED", State("INTERRUPTED")},
    {"OPENING", State("OPENING")},
    {"AUTHORIZED", State("AUTHORIZED")},
    {"RESERVED", State("RESERVED")},
    {"SUSPENDED", State("SUSPENDED")},
    {"FROZEN", State("FROZEN")},
    {"FREEZE", State("FROZEN")},
    {"TRADING_HALT", State("HALT")},
    {"CLOSE_AUCTION", State("CLOSE_AUCTION")},
    {"HOLD", State("HOLD")},
    {"NETTING", State("NETTING")},
    {"EXPIRED", State("EXPIRED")},
    {"RESTART_TRADING", State("RESTART_TRADING")},
    {"INTRADAY_AUCTION", State("INTRADAY_AUCTION")},
    {"EXPIRING", State("EXPIRING")},
};

constexpr int daysOfWeek = 7;
} // namespace

std::string nxProductTypeEnum::GetAsCode() const
{
    for (ProductCode const& row : productCodes)
        if (row.type == _value)
            return row.code;
    return "*";
}

nxEnumValue nxProductTypeEnum::GetValueFromCode(std::string const& code)
{
    for (ProductCode const& row : productCodes)
        if (row.code == code)
            return row.type;
    return NX_UNDEFINED;
}

nxErrorEnum nxProductTypeEnum::SetFromCode(std::string const& code)
{
    nxEnumValue const type = GetValueFromCode(code);
    if (type == NX_UNDEFINED)
        return nxErrorEnum(NX_ERR_INVALID_PARAMETER);
    *this = type;
    return nxErrorEnum();
}

nxEnumValue nxProductTypeEnum::GetValueFromID(std::string const& productID)
{
    constexpr std::size_t shortestID = 2;
    if (productID.size() < shortestID)
        return NX_UNDEFINED;
    std::size_t const codeLength = productID.front() == 'A' ? 2 : 1;
    return GetValueFromCode(productID.substr(0, codeLength));
}

bool nxProductIDFieldEnum::GetFieldAsU32(unsigned int& field) const
{
    if (IsUndefined())
        return false;
    field = _value - NX_PRODUCT_TYPE;
    return true;
}

bool nxProductNamingMethodEnum::RequiresProductDefinition() const
{
    switch (_value)
    {
    case NX_PRODUCT_NAMING_METHOD_EXCHANGE:
    case NX_PRODUCT_NAMING_METHOD_BLOOMBERG_CODE:
    case NX_PRODUCT_NAMING_METHOD_ALIAS: return true;
    default: return false;
    }
}

bool nxStrategyTypeEnum::IsVolStrategy() const
{
    switch (_value)
    {
    case NX_VOL:
    case NX_VSPR:
    case NX_VSTD:
    case NX_VSTG:
    case NX_VCSvP:
    case NX_VPSvC:
    case NX_VLAD:
    case NX_VCMB:
    case NX_VTSPR:
    case NX_V2x1:
    case NX_VDTSPR:
    case NX_VFLY:
    case NX_VICND:
    case NX_VCND:
    case NX_VIFLY:
    case NX_VTSTD:
    case NX_VDTSTD:
    case NX_VGUTS: return true;
    default: return false;
    }
}

char nxCallPutEnum::GetAsSingleCharacterCode() const
{
    switch (_value)
    {
    case NX_CALL: return 'C';
    case NX_PUT: return 'P';
    default: return '*';
    }
}

nxErrorEnum nxCallPutEnum::SetFromSingleCharacterCode(char code)
{
    switch (code)
    {
    case 'C': *this = NX_CALL; return nxErrorEnum();
    case 'P': *this = NX_PUT; return nxErrorEnum();
    default: return nxErrorEnum(NX_ERR_INVALID_PARAMETER);
    }
}

bool nxMonthEnum::SetFromMonthNumber(unsigned int number)
{
    if (number < 1 || number > 12) // months
        return false;
    return _Set(_lowerBound + number);
}

unsigned int nxMonthEnum::GetAsMonthNumber() const
{
    return _value - _lowerBound;
}

void nxMonthEnum::SetFrom3DigitString(std::string const& name)
{
    auto const& names = GetThreeDigitNameMap();
    auto const found = names.find(name);
    if (found == names.end())
        Clear();
    else
        (void)_Set(_lowerBound + found->second);
}

std::string nxMonthEnum::GetAs3DigitString() const
{
    return GetShortDescription();
}

std::map<std::string, unsigned int> const& nxMonthEnum::GetThreeDigitNameMap()
{
    return _GetThreeDigitNameMap();
}

std::map<std::string, unsigned int>& nxMonthEnum::_GetThreeDigitNameMap()
{
    static auto& names = *new std::map<std::string, unsigned int>;
    return names;
}

bool nxMonthEnum::_RegisterRows(std::span<nxEnumWords const> rows)
{
    for (nxEnumWords const& row : rows)
        _GetThreeDigitNameMap().emplace(row.GetToken().substr(0, monthNameLength), row.number - _lowerBound);
    return nxEnum::_RegisterRows(rows);
}

void nxDayOfWeekEnum::SetFromDayOfWeekNumber(int number)
{
    if (number < 0 || number >= daysOfWeek)
        Clear();
    else
        (void)_Set(NX_DAY_OF_WEEK_SUNDAY + static_cast<unsigned int>(number));
}

nxErrorEnum nxDayOfWeekEnum::GetDaysUntil(nxDayOfWeekEnum const& target, unsigned int& days) const
{
    // Undefined and "no change" turn into positions past the week, as every number outside the rows does.
    unsigned int const from = _value - NX_DAY_OF_WEEK_SUNDAY;
    unsigned int const to = target._value - NX_DAY_OF_WEEK_SUNDAY;
    if (from >= daysOfWeek || to >= daysOfWeek)
        return nxErrorEnum(NX_ERR_INVALID_PARAMETER);
    days = (to + daysOfWeek - from) % daysOfWeek;
    return nxErrorEnum();
}

nxTradingSessionTypeEnum nxTradingSessionTypeEnum::CreateFromString(std::string const& word)
{
    return nxFromPrefixedToken<nxTradingSessionTypeEnum>("NX_TRADING_SESSION_TYPE_", word);
}

bool nxTickDataPeriodEnum::IsActualScheduleBased() const
{
    switch (_value)
    {
    case NX_TICK_DATA_PERIOD_10_MINUTE_ACTUAL:
    case NX_TICK_DATA_PERIOD_30_MINUTE_ACTUAL:
    case NX_TICK_DATA_PERIOD_HOUR_ACTUAL: return true;
    default: return false;
    }
}

bool nxTickDataPeriodEnum::IsVolumeBased() const
{
    switch (_value)
    {
    case NX_TICK_DATA_PERIOD_100_VOLUME:
    case NX_TICK_DATA_PERIOD_1000_VOLUME:
    case NX_TICK_DATA_PERIOD_10000_VOLUME:
    case NX_TICK_DATA_PERIOD_100000_VOLUME:
    case NX_TICK_DATA_PERIOD_CUSTOM_VOLUME: return true;
    default: return false;
    }
}

std::string nxTickDataPeriodEnum::GetSubscriptionSubjectDescription() const
{
    switch (_value)
    {
    case NX_TICK_DATA_PERIOD_SECOND: return "SEC";
    case NX_TICK_DATA_PERIOD_MINUTE: return "MIN";
    case NX_TICK_DATA_PERIOD_5_MINUTE: return "5MIN";
    case NX_TICK_DATA_PERIOD_15_MINUTE: return "15MIN";
    case NX_TICK_DATA_PERIOD_30_MINUTE: return "30MIN";
    case NX_TICK_DATA_PERIOD_HOUR: return "HOUR";
    case NX_TICK_DATA_PERIOD_SESSION: return "SESSION";
    case NX_TICK_DATA_PERIOD_10_MINUTE: return "10MIN";
    case NX_TICK_DATA_PERIOD_100_VOLUME: return "100VOL";
    case NX_TICK_DATA_PERIOD_1000_VOLUME: return "1000VOL";
    case NX_TICK_DATA_PERIOD_10000_VOLUME: return "10000VOL";
    case NX_TICK_DATA_PERIOD_100000_VOLUME: return "100000VOL";
    case NX_TICK_DATA_PERIOD_10_MINUTE_ACTUAL: return "10MIN ACTUAL";
    case NX_TICK_DATA_PERIOD_30_MINUTE_ACTUAL: return "30MIN ACTUAL";
    case NX_TICK_DATA_PERIOD_HOUR_ACTUAL: return "HOUR ACTUAL";
    default: return GetShortDescription();
    }
}

bool nxProductStateBitMask::GetStateBitMaskValueForTokenString(std::string const& word,
                                                               nxProductStateBitMask& state)
{
    // What the header repeats, since the rows don't go with it to the hosts.
    static_assert(_preOpen == State("PREOPEN") && _open == State("OPEN") &&
                  _preClosed == State("PRECLOSED") && _closeAuction == State("CLOSE_AUCTION"));

    std::string upper = word;
    nxAsciiLetters::ToUpper(upper);
    for (StateWord const& row : stateWords)
    {
        if (row.word != upper)
            continue;
        state.SetValue(row.state);
        return true;
    }
    return false;
}
