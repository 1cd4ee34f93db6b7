#pragma once

#include "core/vocabulary/nxEnum.h"

/// Trade transaction type.
class NX_CORE_API nxTradeTransactionTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxTradeTransactionTypeEnum, 1900, 1906)
};
