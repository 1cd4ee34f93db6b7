#pragma once

#include "core/vocabulary/nxEnum.h"

/// Rounding method.
class NX_CORE_API nxRoundingMethodEnum : public nxEnum
{
    NX_ENUM_CLASS(nxRoundingMethodEnum, 7400, 7405)
};
