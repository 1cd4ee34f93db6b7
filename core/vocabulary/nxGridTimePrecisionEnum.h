#pragma once

#include "core/vocabulary/nxEnum.h"

/// Down to which fraction of a second a grid shows times.
class NX_CORE_API nxGridTimePrecisionEnum : public nxEnum
{
    NX_ENUM_CLASS(nxGridTimePrecisionEnum, 14200, 14204)
    NX_ENUM_LESS(nxGridTimePrecisionEnum)
};
