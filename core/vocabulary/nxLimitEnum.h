#pragma once

#include "core/vocabulary/nxEnum.h"

/// Limit.
class NX_CORE_API nxLimitEnum : public nxEnum
{
    NX_ENUM_CLASS(nxLimitEnum, 2150, 2159)
};
