#pragma once

#include "core/vocabulary/nxEnum.h"

/// The direction in which a price went.
class NX_CORE_API nxPriceChangeDirectionEnum : public nxEnum
{
    NX_ENUM_CLASS(nxPriceChangeDirectionEnum, 7300, 7304)
};
