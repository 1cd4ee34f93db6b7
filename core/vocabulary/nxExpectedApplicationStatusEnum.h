#pragma once

#include "core/vocabulary/nxEnum.h"

/// Whether a program that is expected to run does so, and in the fault-tolerance state expected of it.
class NX_CORE_API nxExpectedApplicationStatusEnum : public nxEnum
{
    NX_ENUM_CLASS(nxExpectedApplicationStatusEnum, 8200, 8205)
};
