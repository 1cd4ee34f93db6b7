#pragma once

#include "core/vocabulary/nxEnum.h"

/// How a limit reaches down the tree of nodes.
class NX_CORE_API nxLimitTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxLimitTypeEnum, 2200, 2204)
};
