#pragma once

#include "core/vocabulary/nxEnum.h"

/// Limit action.
class NX_CORE_API nxLimitActionEnum : public nxEnum
{
    NX_ENUM_CLASS(nxLimitActionEnum, 2600, 2605)
};
