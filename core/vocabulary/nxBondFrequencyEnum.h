#pragma once

#include "core/vocabulary/nxEnum.h"

/// How often a bond pays interest.
class NX_CORE_API nxBondFrequencyEnum : public nxEnum
{
    NX_ENUM_CLASS(nxBondFrequencyEnum, 9800, 9804)
};
