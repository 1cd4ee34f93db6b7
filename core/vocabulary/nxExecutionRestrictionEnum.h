#pragma once

#include "core/vocabulary/nxEnum.h"

/// Execution restriction.
class NX_CORE_API nxExecutionRestrictionEnum : public nxEnum
{
    NX_ENUM_CLASS(nxExecutionRestrictionEnum, 1050, 1057)
};
