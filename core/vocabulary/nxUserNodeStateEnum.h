#pragma once

#include "core/vocabulary/nxEnum.h"

/// User node state.
class NX_CORE_API nxUserNodeStateEnum : public nxEnum
{
    NX_ENUM_CLASS(nxUserNodeStateEnum, 2850, 2854)
};
