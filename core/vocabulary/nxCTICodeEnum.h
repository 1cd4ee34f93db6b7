#pragma once

#include "core/vocabulary/nxEnum.h"

/// CTI code.
class NX_CORE_API nxCTICodeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxCTICodeEnum, 9000, 9005)
    NX_ENUM_LESS(nxCTICodeEnum)
};
