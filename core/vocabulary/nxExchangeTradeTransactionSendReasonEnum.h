#pragma once

#include "core/vocabulary/nxEnum.h"

/// Why a gateway sends trades again.
class NX_CORE_API nxExchangeTradeTransactionSendReasonEnum : public nxEnum
{
    NX_ENUM_CLASS(nxExchangeTradeTransactionSendReasonEnum, 1950, 1955)
};
