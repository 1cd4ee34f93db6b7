#include "core/vocabulary/nxBitMaskRows.h"
#include "core/vocabulary/nxClickTradingActionsEnum.h"
#include "core/vocabulary/nxKeyboardModifierBitMask.h"
#include "core/vocabulary/nxTraits.h"
#include "core/vocabulary/nxWorkpaceGroupTypeEnum.h"

// What the words of the screens can tell of themselves.

namespace
{
enum class Volume
{
    primary,
    secondary,
    third,
    fourth
};

enum class Action
{
    other,
    join,
    trade,
    joinTicket,
    tradeTicket,
    amendTicket,
    dime,
    joinOrPull,
    joinTicketOrPull,
    tradeOrPull,
    tradeTicketOrPull
};

struct ClickTraits
{
    nxEnumValue row;
    Volume volume;
    Action action;
};

constexpr ClickTraits clickTraits[] = {
#define NX_CLICK(enumerator, volume, action) {enumerator, Volume::volume, Action::action},
#include "core/vocabulary/tables/clickTradingTraits.def"
};
static_assert(nxTraits::CoversRows(clickTraits, NX_CLICK_TRADING_ACTION_JOIN_MARKET,
                                   NX_CLICK_TRADING_ACT_SHOW_TRADE_TICKET_OR_PULL_FOURTH_VOL));

// Undefined and "no change" take part with the primary volume, as everything that names no other does.
constexpr ClickTraits otherClick = {NX_UNDEFINED, Volume::primary, Action::other};

Volume VolumeOf(unsigned int value)
{
    return nxTraits::Of(value, clickTraits, otherClick).volume;
}

Action ActionOf(unsigned int value)
{
    return nxTraits::Of(value, clickTraits, otherClick).action;
}

constexpr unsigned int shiftKey = nxBitsOf(nxKeyboardModifierBitMaskRows, "Shift");
constexpr unsigned int ctrlKey = nxBitsOf(nxKeyboardModifierBitMaskRows, "Ctrl");
constexpr unsigned int altKey = nxBitsOf(nxKeyboardModifierBitMaskRows, "Alt");
} // namespace

bool nxClickTradingActionsEnum::UsesPrimaryOrderVolume() const
{
    return VolumeOf(_value) == Volume::primary;
}

bool nxClickTradingActionsEnum::UsesSecondaryOrderVolume() const
{
    return VolumeOf(_value) == Volume::secondary;
}

bool nxClickTradingActionsEnum::UsesThirdOrderVolume() const
{
    return VolumeOf(_value) == Volume::third;
}

bool nxClickTradingActionsEnum::UsesFourthOrderVolume() const
{
    return VolumeOf(_value) == Volume::fourth;
}

bool nxClickTradingActionsEnum::IsClickJoinMarketAction() const
{
    return ActionOf(_value) == Action::join;
}

bool nxClickTradingActionsEnum::IsClickTradeAction() const
{
    return ActionOf(_value) == Action::trade;
}

bool nxClickTradingActionsEnum::IsShowJoinMarketTicketAction() const
{
    return ActionOf(_value) == Action::joinTicket;
}

bool nxClickTradingActionsEnum::IsShowTradeTicketAction() const
{
    return ActionOf(_value) == Action::tradeTicket;
}

bool nxClickTradingActionsEnum::IsShowAmendTicketAction() const
{
    return ActionOf(_value) == Action::amendTicket;
}

bool nxClickTradingActionsEnum::IsClickDimeAction() const
{
    return ActionOf(_value) == Action::dime;
}

bool nxClickTradingActionsEnum::IsCombinedClickJoinMarketOrPullAction() const
{
    return ActionOf(_value) == Action::joinOrPull;
}

bool nxClickTradingActionsEnum::IsCombinedJoinMarketTicketOrPullAction() const
{
    return ActionOf(_value) == Action::joinTicketOrPull;
}

bool nxClickTradingActionsEnum::IsCombinedClickTradeOrPullAction() const
{
    return ActionOf(_value) == Action::tradeOrPull;
}

bool nxClickTradingActionsEnum::IsCombinedTradeTicketOrPullAction() const
{
    return ActionOf(_value) == Action::tradeTicketOrPull;
}

std::string nxWorkpaceGroupTypeEnum::GetDataInstancePrefix() const
{
    switch (_value)
    {
    case NX_WORKSPACE_GROUP_TYPE_HOME: return "Home_";
    case NX_WORKSPACE_GROUP_TYPE_LAPTOP: return "Laptop_";
    default: return std::string(); // the office has none
    }
}

bool nxKeyboardModifierBitMask::IsShiftKeyDown() const
{
    return AreAnyBitsSet(shiftKey);
}

bool nxKeyboardModifierBitMask::IsCtrlKeyDown() const
{
    return AreAnyBitsSet(ctrlKey);
}

bool nxKeyboardModifierBitMask::IsAltKeyDown() const
{
    return AreAnyBitsSet(altKey);
}
