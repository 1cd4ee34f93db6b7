#pragma once

#include "core/vocabulary/nxEnum.h"

/// Which volume an amendment states: the one that was ordered or the one that is left.
class NX_CORE_API nxOrderVolumeAmendMethodEnum : public nxEnum
{
    NX_ENUM_CLASS(nxOrderVolumeAmendMethodEnum, 8100, 8103)
};
