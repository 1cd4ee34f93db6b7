#pragma once

#include "core/vocabulary/nxEnum.h"

/// Using.
class NX_CORE_API nxUsingEnum : public nxEnum
{
    NX_ENUM_CLASS(nxUsingEnum, 13700, 13703)
};
