#pragma once

#include "core/vocabulary/nxEnum.h"

/// How volumes are shown: in full or in a short form. It selects the converter between texts and volumes.
class NX_CORE_API nxVolumeFormatEnum : public nxEnum
{
    NX_ENUM_CLASS(nxVolumeFormatEnum, 15300, 15303)
};
