#pragma once

#include "core/vocabulary/nxEnum.h"

/// User node type.
class NX_CORE_API nxUserNodeTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxUserNodeTypeEnum, 2500, 2503)
};
