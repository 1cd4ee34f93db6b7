#pragma once

#include "core/vocabulary/nxEnum.h"

/// The type of a parameter with which a Talvex script is started or changed.
class NX_CORE_API nxTalvexParameterTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxTalvexParameterTypeEnum, 9600, 9612)
};
