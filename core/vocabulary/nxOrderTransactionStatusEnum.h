#pragma once

#include "core/vocabulary/nxEnum.h"

/// Order transaction status.
class NX_CORE_API nxOrderTransactionStatusEnum : public nxEnum
{
    NX_ENUM_CLASS(nxOrderTransactionStatusEnum, 1200, 1222)
    NX_ENUM_LESS(nxOrderTransactionStatusEnum)
};
