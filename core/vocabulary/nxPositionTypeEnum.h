#pragma once

#include "core/vocabulary/nxEnum.h"

/// Position type.
class NX_CORE_API nxPositionTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxPositionTypeEnum, 8900, 8903)
};
