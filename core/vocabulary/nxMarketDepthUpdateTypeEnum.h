#pragma once

#include "core/vocabulary/nxEnum.h"

/// Market depth update type.
class NX_CORE_API nxMarketDepthUpdateTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxMarketDepthUpdateTypeEnum, 800, 803)
};
