#pragma once

#include "core/vocabulary/nxEnum.h"

/// Volume format.
class NX_CORE_API nxVolumeFormatEnum : public nxEnum
{
    NX_ENUM_CLASS(nxVolumeFormatEnum, 15300, 15303)
};
