#pragma once

#include "core/vocabulary/nxEnum.h"

/// Aggressor indicator.
class NX_CORE_API nxAggressorIndicatorEnum : public nxEnum
{
    NX_ENUM_CLASS(nxAggressorIndicatorEnum, 9400, 9403)
};
