#pragma once

#include "core/vocabulary/nxEnum.h"

/// Bond day convention.
class NX_CORE_API nxBondDayConventionEnum : public nxEnum
{
    NX_ENUM_CLASS(nxBondDayConventionEnum, 9900, 9906)
};
