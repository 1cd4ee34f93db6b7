#pragma once

#include "core/vocabulary/nxEnum.h"

/// Which of two paired, fault-tolerant servers does the work: the active one, or the one that stands by.
class NX_CORE_API nxFTStateEnum : public nxEnum
{
    NX_ENUM_CLASS(nxFTStateEnum, 5700, 5703)

    bool IsActive() const;
};
