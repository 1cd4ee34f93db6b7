#pragma once

#include "core/vocabulary/nxEnum.h"

/// FIX message type.
class NX_CORE_API nxFIXMessageTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxFIXMessageTypeEnum, 5200, 5214)
};
