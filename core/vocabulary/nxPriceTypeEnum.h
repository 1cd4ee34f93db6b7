#pragma once

#include "core/vocabulary/nxEnum.h"

/// How a price came about where it is not an ordinary one of the order book: implied, indicative, or of a
/// block or another wholesale trade.
class NX_CORE_API nxPriceTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxPriceTypeEnum, 5800, 5827)
};
