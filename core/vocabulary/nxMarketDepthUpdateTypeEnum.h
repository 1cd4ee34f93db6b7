#pragma once

#include "core/vocabulary/nxEnum.h"

/// How an update of the market's depth is to be taken.
class NX_CORE_API nxMarketDepthUpdateTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxMarketDepthUpdateTypeEnum, 800, 803)
};
