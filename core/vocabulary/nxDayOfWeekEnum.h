#pragma once

#include "core/vocabulary/nxEnum.h"

/// Day of week.
class NX_CORE_API nxDayOfWeekEnum : public nxEnum
{
    NX_ENUM_CLASS(nxDayOfWeekEnum, 13200, 13208)
};
