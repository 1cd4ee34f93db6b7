#pragma once

#include "core/vocabulary/nxEnum.h"

/// Call put.
class NX_CORE_API nxCallPutEnum : public nxEnum
{
    NX_ENUM_CLASS(nxCallPutEnum, 20, 23)
};
