#pragma once

#include "core/vocabulary/nxEnum.h"

/// Trade type.
class NX_CORE_API nxTradeTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxTradeTypeEnum, 2000, 2011)
};
