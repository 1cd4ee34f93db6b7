#pragma once

#include "core/vocabulary/nxEnum.h"

/// Log level.
class NX_CORE_API nxLogLevelEnum : public nxEnum
{
    NX_ENUM_CLASS(nxLogLevelEnum, 30, 39)
    NX_ENUM_LESS(nxLogLevelEnum)
};
