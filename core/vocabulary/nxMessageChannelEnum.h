#pragma once

#include "core/vocabulary/nxEnum.h"

/// Message channel.
class NX_CORE_API nxMessageChannelEnum : public nxEnum
{
    NX_ENUM_CLASS(nxMessageChannelEnum, 300, 310)
    NX_ENUM_LESS(nxMessageChannelEnum)
};
