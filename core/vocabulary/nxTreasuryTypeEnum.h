#pragma once

#include "core/vocabulary/nxEnum.h"

/// Treasury type.
class NX_CORE_API nxTreasuryTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxTreasuryTypeEnum, 9300, 9304)
};
