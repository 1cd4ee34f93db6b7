#pragma once

#include "core/vocabulary/nxEnum.h"

/// Grid option colum group.
class NX_CORE_API nxGridOptionColumGroupEnum : public nxEnum
{
    NX_ENUM_CLASS(nxGridOptionColumGroupEnum, 9100, 9104)
    NX_ENUM_LESS(nxGridOptionColumGroupEnum)
};
