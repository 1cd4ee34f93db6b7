#pragma once

#include "core/vocabulary/nxEnum.h"

/// Where a trade comes from: an exchange, a person, or a booking of cash or settlement.
class NX_CORE_API nxTradeTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxTradeTypeEnum, 2000, 2011)
};
