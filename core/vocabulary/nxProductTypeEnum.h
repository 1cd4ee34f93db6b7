#pragma once

#include "core/vocabulary/nxEnum.h"

/// Product type.
class NX_CORE_API nxProductTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxProductTypeEnum, 77, 87)
    NX_ENUM_LESS(nxProductTypeEnum)
};
