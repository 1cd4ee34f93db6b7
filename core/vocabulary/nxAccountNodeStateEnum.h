#pragma once

#include "core/vocabulary/nxEnum.h"

/// Account node state.
class NX_CORE_API nxAccountNodeStateEnum : public nxEnum
{
    NX_ENUM_CLASS(nxAccountNodeStateEnum, 2800, 2803)
};
