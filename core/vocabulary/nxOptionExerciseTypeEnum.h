#pragma once

#include "core/vocabulary/nxEnum.h"

/// Option exercise type.
class NX_CORE_API nxOptionExerciseTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxOptionExerciseTypeEnum, 90, 93)
};
