#pragma once

#include "core/vocabulary/nxEnum.h"

/// FIX product ID method.
class NX_CORE_API nxFIXProductIDMethodEnum : public nxEnum
{
    NX_ENUM_CLASS(nxFIXProductIDMethodEnum, 10400, 10404)
};
