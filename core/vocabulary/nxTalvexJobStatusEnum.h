#pragma once

#include "core/vocabulary/nxEnum.h"

/// The state of a job of Talvex, the platform's scripted algorithms.
class NX_CORE_API nxTalvexJobStatusEnum : public nxEnum
{
    NX_ENUM_CLASS(nxTalvexJobStatusEnum, 10300, 10305)
};
