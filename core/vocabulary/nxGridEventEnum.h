#pragma once

#include "core/vocabulary/nxEnum.h"

/// What a user's mouse did on a grid.
class NX_CORE_API nxGridEventEnum : public nxEnum
{
    NX_ENUM_CLASS(nxGridEventEnum, 2300, 2314)
    NX_ENUM_LESS(nxGridEventEnum)
};
