#pragma once

#include "core/vocabulary/nxEnum.h"

/// Ordering.
class NX_CORE_API nxOrderingEnum : public nxEnum
{
    NX_ENUM_CLASS(nxOrderingEnum, 13400, 13403)
};
