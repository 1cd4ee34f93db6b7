#pragma once

#include "core/vocabulary/nxEnum.h"

/// FIX connection state.
class NX_CORE_API nxFIXConnectionStateEnum : public nxEnum
{
    NX_ENUM_CLASS(nxFIXConnectionStateEnum, 8600, 8609)
};
