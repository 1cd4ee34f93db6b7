#pragma once

#include "core/vocabulary/nxEnum.h"

/// Trading capacity.
class NX_CORE_API nxTradingCapacityEnum : public nxEnum
{
    NX_ENUM_CLASS_PLAIN(nxTradingCapacityEnum, 14400, 14404)
    NX_ENUM_LESS(nxTradingCapacityEnum)
};
