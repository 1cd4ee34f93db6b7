#pragma once

#include "core/vocabulary/nxEnum.h"

/// Who decided upon the investment, for reports to the regulator.
class NX_CORE_API nxInvestmentDecisionQualifierEnum : public nxEnum
{
    NX_ENUM_CLASS_PLAIN(nxInvestmentDecisionQualifierEnum, 14700, 14703)
};
