#pragma once

#include "core/vocabulary/nxEnum.h"

/// Tick continuation type.
class NX_CORE_API nxTickContinuationTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxTickContinuationTypeEnum, 14000, 14004)
};
