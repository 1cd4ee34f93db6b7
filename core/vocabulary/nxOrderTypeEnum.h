#pragma once

#include "core/vocabulary/nxEnum.h"

/// Order type.
class NX_CORE_API nxOrderTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxOrderTypeEnum, 1000, 1011)
};
