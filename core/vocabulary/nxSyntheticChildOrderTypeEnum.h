#pragma once

#include "core/vocabulary/nxEnum.h"

/// Synthetic child order type.
class NX_CORE_API nxSyntheticChildOrderTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxSyntheticChildOrderTypeEnum, 7000, 7012)
};
