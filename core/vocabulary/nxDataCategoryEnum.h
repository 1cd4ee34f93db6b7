#pragma once

#include "core/vocabulary/nxEnum.h"

/// Data category.
class NX_CORE_API nxDataCategoryEnum : public nxEnum
{
    NX_ENUM_CLASS(nxDataCategoryEnum, 5600, 5605)
};
