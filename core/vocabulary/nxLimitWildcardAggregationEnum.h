#pragma once

#include "core/vocabulary/nxEnum.h"

/// How a limit on several products counts: on their sum or on each alone.
class NX_CORE_API nxLimitWildcardAggregationEnum : public nxEnum
{
    NX_ENUM_CLASS(nxLimitWildcardAggregationEnum, 7600, 7603)
};
