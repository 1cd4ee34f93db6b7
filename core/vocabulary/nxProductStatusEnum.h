#pragma once

#include "core/vocabulary/nxEnum.h"

/// Product status.
class NX_CORE_API nxProductStatusEnum : public nxEnum
{
    NX_ENUM_CLASS(nxProductStatusEnum, 4000, 4005)
};
