#pragma once

#include "core/vocabulary/nxEnum.h"

/// Case sensitivity.
class NX_CORE_API nxCaseSensitivityEnum : public nxEnum
{
    NX_ENUM_CLASS(nxCaseSensitivityEnum, 25, 28)
};
