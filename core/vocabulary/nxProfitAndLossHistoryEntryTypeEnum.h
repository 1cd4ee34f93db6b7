#pragma once

#include "core/vocabulary/nxEnum.h"

/// Profit and loss history entry type.
class NX_CORE_API nxProfitAndLossHistoryEntryTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxProfitAndLossHistoryEntryTypeEnum, 9500, 9504)
};
