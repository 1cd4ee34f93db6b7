#pragma once

#include "core/vocabulary/nxEnum.h"

/// Strategy type.
class NX_CORE_API nxStrategyTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxStrategyTypeEnum, 5500, 5574)
    NX_ENUM_LESS(nxStrategyTypeEnum)
};
