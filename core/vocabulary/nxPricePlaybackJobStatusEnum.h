#pragma once

#include "core/vocabulary/nxEnum.h"

/// Where a playback of recorded prices stands.
class NX_CORE_API nxPricePlaybackJobStatusEnum : public nxEnum
{
    NX_ENUM_CLASS(nxPricePlaybackJobStatusEnum, 10200, 10204)
};
