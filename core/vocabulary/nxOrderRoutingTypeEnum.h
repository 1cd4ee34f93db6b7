#pragma once

#include "core/vocabulary/nxEnum.h"

/// Order routing type.
class NX_CORE_API nxOrderRoutingTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxOrderRoutingTypeEnum, 8300, 8304)
};
