#pragma once

#include "core/vocabulary/nxEnum.h"

/// The step that a transaction of an order has come to, from validation through security, risk and limits to
/// the exchange's answer.
class NX_CORE_API nxOrderTransactionStatusEnum : public nxEnum
{
    NX_ENUM_CLASS(nxOrderTransactionStatusEnum, 1200, 1222)
    NX_ENUM_LESS(nxOrderTransactionStatusEnum)
};
