#pragma once

#include "core/vocabulary/nxEnum.h"

/// Who entered a trade: a person or a program.
class NX_CORE_API nxTradeInputSourceEnum : public nxEnum
{
    NX_ENUM_CLASS(nxTradeInputSourceEnum, 10900, 10904)
};
