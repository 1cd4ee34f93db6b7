#pragma once

#include "core/vocabulary/nxEnum.h"

/// Limit type.
class NX_CORE_API nxLimitTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxLimitTypeEnum, 2200, 2204)
};
