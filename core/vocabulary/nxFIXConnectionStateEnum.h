#pragma once

#include "core/vocabulary/nxEnum.h"

/// The state of a FIX connection, whose logging in and out may each have a second level.
class NX_CORE_API nxFIXConnectionStateEnum : public nxEnum
{
    NX_ENUM_CLASS(nxFIXConnectionStateEnum, 8600, 8609)
};
