#pragma once

#include "core/vocabulary/nxEnum.h"

/// Which way a number is rounded to a multiple of a step.
class NX_CORE_API nxRoundingMethodEnum : public nxEnum
{
    NX_ENUM_CLASS(nxRoundingMethodEnum, 7400, 7405)
};
