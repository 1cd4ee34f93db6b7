#pragma once

#include "core/vocabulary/nxEnum.h"

/// What lies under a product: an index, a share or an interest rate.
class NX_CORE_API nxProductCategoryEnum : public nxEnum
{
    NX_ENUM_CLASS(nxProductCategoryEnum, 900, 904)
};
