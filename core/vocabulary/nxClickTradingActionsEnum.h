#pragma once

#include "core/vocabulary/nxEnum.h"

/// What a click on a price grid does, and with which of the user's four standing order volumes.
class NX_CORE_API nxClickTradingActionsEnum : public nxEnum
{
    NX_ENUM_CLASS(nxClickTradingActionsEnum, 3000, 3039)
    NX_ENUM_LESS(nxClickTradingActionsEnum)

    /// Which of the user's order volumes the action uses; exactly one is true. The first is also that of actions
    /// that need no volume, and of undefined and "no change".
    bool UsesPrimaryOrderVolume() const;
    bool UsesSecondaryOrderVolume() const;
    bool UsesThirdOrderVolume() const;
    bool UsesFourthOrderVolume() const;

    /// Single actions, each with any of the volumes.
    bool IsClickJoinMarketAction() const;
    bool IsClickTradeAction() const;
    bool IsShowJoinMarketTicketAction() const;
    bool IsShowTradeTicketAction() const;
    bool IsShowAmendTicketAction() const;
    bool IsClickDimeAction() const;

    /// Actions that pull the user's orders where there are some, each with any of the volumes. They are not
    /// single actions as well.
    bool IsCombinedClickJoinMarketOrPullAction() const;
    bool IsCombinedJoinMarketTicketOrPullAction() const;
    bool IsCombinedClickTradeOrPullAction() const;
    bool IsCombinedTradeTicketOrPullAction() const;
};
