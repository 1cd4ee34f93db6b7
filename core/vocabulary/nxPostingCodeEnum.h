#pragma once

#include "core/vocabulary/nxEnum.h"

/// How a trade is posted to an account at the clearing house.
class NX_CORE_API nxPostingCodeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxPostingCodeEnum, 2900, 2906)
    NX_ENUM_LESS(nxPostingCodeEnum)
};
