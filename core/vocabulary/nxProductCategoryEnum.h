#pragma once

#include "core/vocabulary/nxEnum.h"

/// Product category.
class NX_CORE_API nxProductCategoryEnum : public nxEnum
{
    NX_ENUM_CLASS(nxProductCategoryEnum, 900, 904)
};
