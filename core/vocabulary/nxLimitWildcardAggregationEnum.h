#pragma once

#include "core/vocabulary/nxEnum.h"

/// Limit wildcard aggregation.
class NX_CORE_API nxLimitWildcardAggregationEnum : public nxEnum
{
    NX_ENUM_CLASS(nxLimitWildcardAggregationEnum, 7600, 7603)
};
