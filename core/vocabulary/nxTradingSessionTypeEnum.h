#pragma once

#include "core/vocabulary/nxEnum.h"

/// Trading session type.
class NX_CORE_API nxTradingSessionTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxTradingSessionTypeEnum, 15200, 15207)
    NX_ENUM_LESS(nxTradingSessionTypeEnum)
};
