#pragma once

#include "core/vocabulary/nxEnum.h"

/// The kinds of entry in the log grid of a screen.
class NX_CORE_API nxGridLogCategoryEnum : public nxEnum
{
    NX_ENUM_CLASS(nxGridLogCategoryEnum, 5400, 5417)
    NX_ENUM_LESS(nxGridLogCategoryEnum)
};
