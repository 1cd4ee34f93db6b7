#pragma once

#include "core/vocabulary/nxEnum.h"

/// Fill source.
class NX_CORE_API nxFillSourceEnum : public nxEnum
{
    NX_ENUM_CLASS(nxFillSourceEnum, 12500, 12503)
};
