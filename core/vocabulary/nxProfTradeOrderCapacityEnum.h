#pragma once

#include "core/vocabulary/nxEnum.h"

/// Prof trade order capacity.
class NX_CORE_API nxProfTradeOrderCapacityEnum : public nxEnum
{
    NX_ENUM_CLASS(nxProfTradeOrderCapacityEnum, 10800, 10803)
};
