#pragma once

#include "core/vocabulary/nxEnum.h"

/// The kinds of data in which an interest can be announced.
class NX_CORE_API nxDataInterestCategoryEnum : public nxEnum
{
    NX_ENUM_CLASS(nxDataInterestCategoryEnum, 12800, 12810)
};
