#pragma once

#include "core/vocabulary/nxEnum.h"

/// Spread machine hedge aggression method.
class NX_CORE_API nxSpreadMachineHedgeAggressionMethodEnum : public nxEnum
{
    NX_ENUM_CLASS(nxSpreadMachineHedgeAggressionMethodEnum, 10700, 10703)
};
