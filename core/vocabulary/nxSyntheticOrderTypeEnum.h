#pragma once

#include "core/vocabulary/nxEnum.h"

/// Synthetic order type.
class NX_CORE_API nxSyntheticOrderTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxSyntheticOrderTypeEnum, 5900, 5928)
};
