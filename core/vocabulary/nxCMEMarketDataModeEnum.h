#pragma once

#include "core/vocabulary/nxEnum.h"

/// CME market data mode.
class NX_CORE_API nxCMEMarketDataModeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxCMEMarketDataModeEnum, 3150, 3154)
};
