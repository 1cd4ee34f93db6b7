#pragma once

#include "core/vocabulary/nxEnum.h"

/// What a playback of recorded prices is for, and who shares it.
class NX_CORE_API nxPricePlaybackTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxPricePlaybackTypeEnum, 13100, 13105)
};
