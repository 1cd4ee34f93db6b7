#pragma once

#include "core/vocabulary/nxEnum.h"

/// Open close.
class NX_CORE_API nxOpenCloseEnum : public nxEnum
{
    NX_ENUM_CLASS(nxOpenCloseEnum, 1060, 1064)
};
