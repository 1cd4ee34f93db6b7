#pragma once

#include "core/vocabulary/nxEnum.h"

/// What the text of a search for products is matched with.
class NX_CORE_API nxProductSearchTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxProductSearchTypeEnum, 15100, 15105)
    NX_ENUM_LESS(nxProductSearchTypeEnum)
};
