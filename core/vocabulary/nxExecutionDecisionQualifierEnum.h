#pragma once

#include "core/vocabulary/nxEnum.h"

/// Execution decision qualifier.
class NX_CORE_API nxExecutionDecisionQualifierEnum : public nxEnum
{
    NX_ENUM_CLASS_PLAIN(nxExecutionDecisionQualifierEnum, 14600, 14603)
};
