#pragma once

#include "core/vocabulary/nxEnum.h"

/// Exchange state.
class NX_CORE_API nxExchangeStateEnum : public nxEnum
{
    NX_ENUM_CLASS(nxExchangeStateEnum, 5300, 5309)
};
