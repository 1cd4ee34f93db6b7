#pragma once

#include "core/vocabulary/nxEnum.h"

/// Talvex parameter type.
class NX_CORE_API nxTalvexParameterTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxTalvexParameterTypeEnum, 9600, 9612)
};
