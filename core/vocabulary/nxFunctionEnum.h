#pragma once

#include "core/vocabulary/nxEnum.h"

/// Function.
class NX_CORE_API nxFunctionEnum : public nxEnum
{
    NX_ENUM_CLASS(nxFunctionEnum, 100000, 199999)
    NX_ENUM_LESS(nxFunctionEnum)
};
