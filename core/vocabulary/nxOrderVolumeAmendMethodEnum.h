#pragma once

#include "core/vocabulary/nxEnum.h"

/// Order volume amend method.
class NX_CORE_API nxOrderVolumeAmendMethodEnum : public nxEnum
{
    NX_ENUM_CLASS(nxOrderVolumeAmendMethodEnum, 8100, 8103)
};
