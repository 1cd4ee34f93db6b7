#pragma once

#include "core/vocabulary/nxEnum.h"

/// Product naming method.
class NX_CORE_API nxProductNamingMethodEnum : public nxEnum
{
    NX_ENUM_CLASS(nxProductNamingMethodEnum, 15900, 15905)
    NX_ENUM_LESS(nxProductNamingMethodEnum)
};
