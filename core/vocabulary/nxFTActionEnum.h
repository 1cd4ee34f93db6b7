#pragma once

#include "core/vocabulary/nxEnum.h"

/// What a fault-tolerant server is told to do: prepare to take over, take over, or stand back.
class NX_CORE_API nxFTActionEnum : public nxEnum
{
    NX_ENUM_CLASS(nxFTActionEnum, 5710, 5714)
};
