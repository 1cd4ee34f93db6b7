#pragma once

#include "core/vocabulary/nxEnum.h"

/// When an option can be exercised.
class NX_CORE_API nxOptionExerciseTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxOptionExerciseTypeEnum, 90, 93)
};
