#pragma once

#include "core/vocabulary/nxEnum.h"

/// Whether the order took a price that was there or had been waiting for it.
class NX_CORE_API nxAggressorIndicatorEnum : public nxEnum
{
    NX_ENUM_CLASS(nxAggressorIndicatorEnum, 9400, 9403)
};
