#pragma once

#include "core/vocabulary/nxEnum.h"

/// Where local data comes from: a chart, a spreadsheet, a price ladder, or a Talvex script.
class NX_CORE_API nxLocalDataSourceEnum : public nxEnum
{
    NX_ENUM_CLASS(nxLocalDataSourceEnum, 12900, 12905)
};
