#pragma once

#include "core/vocabulary/nxEnum.h"

/// Add or subtract.
class NX_CORE_API nxAddOrSubtractEnum : public nxEnum
{
    NX_ENUM_CLASS(nxAddOrSubtractEnum, 13800, 13803)
};
