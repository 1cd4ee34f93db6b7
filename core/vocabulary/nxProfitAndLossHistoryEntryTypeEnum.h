#pragma once

#include "core/vocabulary/nxEnum.h"

/// What made an entry of the history of profit and loss.
class NX_CORE_API nxProfitAndLossHistoryEntryTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxProfitAndLossHistoryEntryTypeEnum, 9500, 9504)
};
