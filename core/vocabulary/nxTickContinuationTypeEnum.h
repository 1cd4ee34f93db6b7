#pragma once

#include "core/vocabulary/nxEnum.h"

/// With what a history of ticks goes on when its series expires: nothing, the next series, or that of a year
/// later.
class NX_CORE_API nxTickContinuationTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxTickContinuationTypeEnum, 14000, 14004)
};
