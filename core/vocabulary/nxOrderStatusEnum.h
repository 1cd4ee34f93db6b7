#pragma once

#include "core/vocabulary/nxEnum.h"

/// Order status.
class NX_CORE_API nxOrderStatusEnum : public nxEnum
{
    NX_ENUM_CLASS(nxOrderStatusEnum, 1100, 1111)
};
