#pragma once

#include "core/vocabulary/nxEnum.h"

/// The special ways that an order may take to the exchange.
class NX_CORE_API nxOrderRoutingTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxOrderRoutingTypeEnum, 8300, 8304)
};
