#pragma once

#include "core/vocabulary/nxEnum.h"

/// Price playback type.
class NX_CORE_API nxPricePlaybackTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxPricePlaybackTypeEnum, 13100, 13105)
};
