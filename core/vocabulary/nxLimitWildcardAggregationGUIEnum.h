#pragma once

#include "core/vocabulary/nxEnum.h"

/// Limit wildcard aggregation GUI.
class NX_CORE_API nxLimitWildcardAggregationGUIEnum : public nxEnum
{
    NX_ENUM_CLASS(nxLimitWildcardAggregationGUIEnum, 7650, 7654)
};
