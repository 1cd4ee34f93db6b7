#pragma once

#include "core/vocabulary/nxEnum.h"

/// Which checks a limit server makes.
class NX_CORE_API nxLimitServerModeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxLimitServerModeEnum, 7500, 7505)
};
