#pragma once

#include "core/vocabulary/nxEnum.h"

/// What deserves attention about an order.
class NX_CORE_API nxOrderFlagEnum : public nxEnum
{
    NX_ENUM_CLASS(nxOrderFlagEnum, 8000, 8002)
};
