#pragma once

#include "core/vocabulary/nxEnum.h"

/// The customer type indicator of a trade, 1 to 4.
class NX_CORE_API nxCTICodeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxCTICodeEnum, 9000, 9005)
    NX_ENUM_LESS(nxCTICodeEnum)
};
