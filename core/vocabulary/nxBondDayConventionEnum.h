#pragma once

#include "core/vocabulary/nxEnum.h"

/// How the days of a bond's interest are counted.
class NX_CORE_API nxBondDayConventionEnum : public nxEnum
{
    NX_ENUM_CLASS(nxBondDayConventionEnum, 9900, 9906)
};
