#pragma once

#include "core/vocabulary/nxEnum.h"

/// Data interest category.
class NX_CORE_API nxDataInterestCategoryEnum : public nxEnum
{
    NX_ENUM_CLASS(nxDataInterestCategoryEnum, 12800, 12810)
};
