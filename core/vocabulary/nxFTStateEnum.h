#pragma once

#include "core/vocabulary/nxEnum.h"

/// FT state.
class NX_CORE_API nxFTStateEnum : public nxEnum
{
    NX_ENUM_CLASS(nxFTStateEnum, 5700, 5703)
};
