#pragma once

#include "core/vocabulary/nxEnum.h"

/// The figure that a limit bounds.
class NX_CORE_API nxLimitEnum : public nxEnum
{
    NX_ENUM_CLASS(nxLimitEnum, 2150, 2159)
};
