#pragma once

#include "core/vocabulary/nxEnum.h"

/// Comparison.
class NX_CORE_API nxComparisonEnum : public nxEnum
{
    NX_ENUM_CLASS(nxComparisonEnum, 13500, 13507)
};
