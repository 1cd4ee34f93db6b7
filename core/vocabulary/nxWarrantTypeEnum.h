#pragma once

#include "core/vocabulary/nxEnum.h"

/// Warrant type.
class NX_CORE_API nxWarrantTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxWarrantTypeEnum, 13300, 13309)
};
