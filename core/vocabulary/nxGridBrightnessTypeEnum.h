#pragma once

#include "core/vocabulary/nxEnum.h"

/// Whether the stripes of a grid are darker or brighter than its background.
class NX_CORE_API nxGridBrightnessTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxGridBrightnessTypeEnum, 14900, 14904)
    NX_ENUM_LESS(nxGridBrightnessTypeEnum)
};
