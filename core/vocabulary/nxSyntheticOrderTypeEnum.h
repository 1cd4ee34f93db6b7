#pragma once

#include "core/vocabulary/nxEnum.h"

/// The kinds of orders that the platform works itself, on top of orders at an exchange.
class NX_CORE_API nxSyntheticOrderTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxSyntheticOrderTypeEnum, 5900, 5928)

    /// The predicates hold row by row; for undefined and "no change" all are false, except for
    /// CanParentOrdersBeShownOnPricingScreens().
    bool CanBeParentOfSyntheticSpreadOrders() const;
    bool CanBeShattered() const;
    bool RequiresGroupSubmission() const;
    bool CanParentOrdersBeShownOnPricingScreens() const;
    bool CanChildOrdersBeShownOnPricingScreens() const;

    /// True for both forms of Talvex.
    bool IsVariantOfTalvex() const;

    /// True when users may pass this action through to the children of such an order: only
    /// NX_FUNCTION_SHATTER_ORDER, and only where the order can be shattered.
    bool IsSupportedPassThroughAction(nxEnumValue action) const;

    /// The token without the prefix that the class's tokens begin with, in whichever of its three spellings.
    /// @return false, with `suffix` left alone, for a token without such a prefix.
    bool GetShortDescriptionSuffix(std::string& suffix) const;
};
