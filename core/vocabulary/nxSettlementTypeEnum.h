#pragma once

#include "core/vocabulary/nxEnum.h"

/// How a product is settled.
class NX_CORE_API nxSettlementTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxSettlementTypeEnum, 1300, 1303)
};
