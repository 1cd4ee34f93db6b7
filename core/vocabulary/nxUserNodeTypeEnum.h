#pragma once

#include "core/vocabulary/nxEnum.h"

/// Whether a node of the tree of users is a user or a group of them.
class NX_CORE_API nxUserNodeTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxUserNodeTypeEnum, 2500, 2503)
};
