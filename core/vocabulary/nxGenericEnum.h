#pragma once

#include "core/vocabulary/nxEnum.h"

/// Generic.
class NX_CORE_API nxGenericEnum : public nxEnum
{
    NX_ENUM_CLASS(nxGenericEnum, 0, 999999)
};
