#pragma once

#include "core/vocabulary/nxEnum.h"

/// What a test product is there for.
class NX_CORE_API nxTestProductCategoryEnum : public nxEnum
{
    NX_ENUM_CLASS(nxTestProductCategoryEnum, 15400, 15404)
};
