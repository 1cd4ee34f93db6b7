#pragma once

#include "core/vocabulary/nxEnum.h"

/// Which of CME's data feeds, production or certification, is read in which environment.
class NX_CORE_API nxCMEMarketDataModeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxCMEMarketDataModeEnum, 3150, 3154)
};
