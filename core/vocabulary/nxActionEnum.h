#pragma once

#include "core/vocabulary/nxEnum.h"

/// Action.
class NX_CORE_API nxActionEnum : public nxEnum
{
    NX_ENUM_CLASS(nxActionEnum, 12450, 12454)
};
