#pragma once

#include "core/vocabulary/nxEnum.h"

/// Trade status.
class NX_CORE_API nxTradeStatusEnum : public nxEnum
{
    NX_ENUM_CLASS(nxTradeStatusEnum, 1800, 1808)
};
