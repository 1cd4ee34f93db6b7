#pragma once

#include "core/vocabulary/nxEnum.h"

/// The shape of a strategy, the way its legs are put together. The token is the short code that stands in a
/// product identifier; its case matters, and a tail of small letters marks a variant ("TSPRrt" is the reduced
/// tick "TSPR").
class NX_CORE_API nxStrategyTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxStrategyTypeEnum, 5500, 5574)
    NX_ENUM_LESS(nxStrategyTypeEnum)

    /// True for the strategies that trade volatility.
    bool IsVolStrategy() const;
};
