#pragma once

#include "core/vocabulary/nxEnum.h"

/// Value status.
class NX_CORE_API nxValueStatusEnum : public nxEnum
{
    NX_ENUM_CLASS(nxValueStatusEnum, 240, 244)
};
