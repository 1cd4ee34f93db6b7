#pragma once

#include "core/vocabulary/nxEnum.h"

/// How the volume of a spread's hedge is rounded.
class NX_CORE_API nxSpreadMachineHedgeAggressionMethodEnum : public nxEnum
{
    NX_ENUM_CLASS(nxSpreadMachineHedgeAggressionMethodEnum, 10700, 10703)
};
