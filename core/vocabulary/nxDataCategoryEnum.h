#pragma once

#include "core/vocabulary/nxEnum.h"

/// The kinds of document that the data server stores.
class NX_CORE_API nxDataCategoryEnum : public nxEnum
{
    NX_ENUM_CLASS(nxDataCategoryEnum, 5600, 5605)
};
