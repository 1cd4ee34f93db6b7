#pragma once

#include "core/vocabulary/nxEnum.h"

/// Whether a comparison of texts tells capitals from small letters. Both rows have the same text.
class NX_CORE_API nxCaseSensitivityEnum : public nxEnum
{
    NX_ENUM_CLASS(nxCaseSensitivityEnum, 25, 28)
};
