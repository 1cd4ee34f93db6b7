#pragma once

#include "core/vocabulary/nxEnum.h"

/// Order end of day type.
class NX_CORE_API nxOrderEndOfDayTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxOrderEndOfDayTypeEnum, 15500, 15503)
};
