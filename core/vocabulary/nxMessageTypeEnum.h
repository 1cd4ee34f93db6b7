#pragma once

#include "core/vocabulary/nxEnum.h"

/// Message type.
class NX_CORE_API nxMessageTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxMessageTypeEnum, 50, 55)
};
