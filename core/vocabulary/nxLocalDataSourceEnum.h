#pragma once

#include "core/vocabulary/nxEnum.h"

/// Local data source.
class NX_CORE_API nxLocalDataSourceEnum : public nxEnum
{
    NX_ENUM_CLASS(nxLocalDataSourceEnum, 12900, 12905)
};
