#pragma once

#include "core/vocabulary/nxEnum.h"

/// What a limit is set for: accounts, users, or one side of an account's risk.
class NX_CORE_API nxLimitCategoryEnum : public nxEnum
{
    NX_ENUM_CLASS(nxLimitCategoryEnum, 2100, 2106)
    NX_ENUM_LESS(nxLimitCategoryEnum)
};
