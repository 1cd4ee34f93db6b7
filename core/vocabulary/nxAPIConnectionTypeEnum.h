#pragma once

#include "core/vocabulary/nxEnum.h"

/// API connection type.
class NX_CORE_API nxAPIConnectionTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxAPIConnectionTypeEnum, 17000, 17010)
    NX_ENUM_LESS(nxAPIConnectionTypeEnum)
};
