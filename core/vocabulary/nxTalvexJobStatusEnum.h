#pragma once

#include "core/vocabulary/nxEnum.h"

/// Talvex job status.
class NX_CORE_API nxTalvexJobStatusEnum : public nxEnum
{
    NX_ENUM_CLASS(nxTalvexJobStatusEnum, 10300, 10305)
};
