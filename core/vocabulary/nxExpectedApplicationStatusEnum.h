#pragma once

#include "core/vocabulary/nxEnum.h"

/// Expected application status.
class NX_CORE_API nxExpectedApplicationStatusEnum : public nxEnum
{
    NX_ENUM_CLASS(nxExpectedApplicationStatusEnum, 8200, 8205)
};
