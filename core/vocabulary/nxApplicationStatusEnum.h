#pragma once

#include "core/vocabulary/nxEnum.h"

/// Application status.
class NX_CORE_API nxApplicationStatusEnum : public nxEnum
{
    NX_ENUM_CLASS(nxApplicationStatusEnum, 200, 209)
};
