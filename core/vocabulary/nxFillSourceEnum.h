#pragma once

#include "core/vocabulary/nxEnum.h"

/// Where a fill was made: at an exchange or by matching orders within the firm.
class NX_CORE_API nxFillSourceEnum : public nxEnum
{
    NX_ENUM_CLASS(nxFillSourceEnum, 12500, 12503)
};
