#pragma once

#include "core/vocabulary/nxEnum.h"

/// Month.
class NX_CORE_API nxMonthEnum : public nxEnum
{
    NX_ENUM_CLASS(nxMonthEnum, 220, 233)
};
