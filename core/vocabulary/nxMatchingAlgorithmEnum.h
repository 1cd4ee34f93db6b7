#pragma once

#include "core/vocabulary/nxEnum.h"

/// Matching algorithm.
class NX_CORE_API nxMatchingAlgorithmEnum : public nxEnum
{
    NX_ENUM_CLASS(nxMatchingAlgorithmEnum, 12400, 12403)
};
