#pragma once

#include "core/vocabulary/nxEnum.h"

/// Whether a node of the tree of accounts is an account or a group of them.
class NX_CORE_API nxAccountNodeTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxAccountNodeTypeEnum, 2400, 2403)
};
