#pragma once

#include "core/vocabulary/nxEnum.h"

/// Trade input source.
class NX_CORE_API nxTradeInputSourceEnum : public nxEnum
{
    NX_ENUM_CLASS(nxTradeInputSourceEnum, 10900, 10904)
};
