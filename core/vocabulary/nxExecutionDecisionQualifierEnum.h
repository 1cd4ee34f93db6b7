#pragma once

#include "core/vocabulary/nxEnum.h"

/// Who decided upon the execution, for reports to the regulator.
class NX_CORE_API nxExecutionDecisionQualifierEnum : public nxEnum
{
    NX_ENUM_CLASS_PLAIN(nxExecutionDecisionQualifierEnum, 14600, 14603)
};
