#pragma once

#include "core/vocabulary/nxEnum.h"

/// The kind of a warrant.
class NX_CORE_API nxWarrantTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxWarrantTypeEnum, 13300, 13309)
};
