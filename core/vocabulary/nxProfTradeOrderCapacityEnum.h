#pragma once

#include "core/vocabulary/nxEnum.h"

/// The part that an order plays in a trade between professionals.
class NX_CORE_API nxProfTradeOrderCapacityEnum : public nxEnum
{
    NX_ENUM_CLASS(nxProfTradeOrderCapacityEnum, 10800, 10803)
};
