#pragma once

#include "core/vocabulary/nxEnum.h"

/// Exchange trade transaction send reason.
class NX_CORE_API nxExchangeTradeTransactionSendReasonEnum : public nxEnum
{
    NX_ENUM_CLASS(nxExchangeTradeTransactionSendReasonEnum, 1950, 1955)
};
