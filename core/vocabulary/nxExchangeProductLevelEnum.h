#pragma once

#include "core/vocabulary/nxEnum.h"

/// Exchange product level.
class NX_CORE_API nxExchangeProductLevelEnum : public nxEnum
{
    NX_ENUM_CLASS(nxExchangeProductLevelEnum, 1700, 1704)
};
