#pragma once

#include "core/vocabulary/nxEnum.h"

/// Spread child order state.
class NX_CORE_API nxSpreadChildOrderStateEnum : public nxEnum
{
    NX_ENUM_CLASS(nxSpreadChildOrderStateEnum, 7100, 7109)
};
