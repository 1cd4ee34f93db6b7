#pragma once

#include "core/vocabulary/nxEnum.h"

/// The kind of a government's debt.
class NX_CORE_API nxTreasuryTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxTreasuryTypeEnum, 9300, 9304)
};
