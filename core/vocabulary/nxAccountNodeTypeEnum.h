#pragma once

#include "core/vocabulary/nxEnum.h"

/// Account node type.
class NX_CORE_API nxAccountNodeTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxAccountNodeTypeEnum, 2400, 2403)
};
