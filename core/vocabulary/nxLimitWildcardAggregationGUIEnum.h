#pragma once

#include "core/vocabulary/nxEnum.h"

/// The choice that screens offer between the two ways to count a limit on several products, or both.
class NX_CORE_API nxLimitWildcardAggregationGUIEnum : public nxEnum
{
    NX_ENUM_CLASS(nxLimitWildcardAggregationGUIEnum, 7650, 7654)
};
