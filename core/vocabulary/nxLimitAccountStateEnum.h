#pragma once

#include "core/vocabulary/nxEnum.h"

/// Limit account state.
class NX_CORE_API nxLimitAccountStateEnum : public nxEnum
{
    NX_ENUM_CLASS(nxLimitAccountStateEnum, 2700, 2707)
    NX_ENUM_LESS(nxLimitAccountStateEnum)
};
