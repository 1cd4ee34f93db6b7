#pragma once

#include "core/vocabulary/nxEnum.h"
#include "core/vocabulary/nxSyntheticOrderTypeEnum.h"

/// The part that a child plays within its synthetic order.
class NX_CORE_API nxSyntheticChildOrderTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxSyntheticChildOrderTypeEnum, 7000, 7012)

    /// True for a working order of a spread.
    bool IsSpreadWorkingChildOrder() const;

    /// True for the orders that hedge a working one: takeout and hedge.
    bool IsSpreadHedgeChildOrder() const;

    /// True when a user may amend this child by hand: a takeout, hedge or scratch of a spread or Talvex.
    bool SupportsUserAmendments(nxSyntheticOrderTypeEnum const& parent) const;
};
