#pragma once

#include "core/vocabulary/nxEnum.h"

/// Workpace group type.
class NX_CORE_API nxWorkpaceGroupTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxWorkpaceGroupTypeEnum, 18000, 18004)
    NX_ENUM_LESS(nxWorkpaceGroupTypeEnum)
};
