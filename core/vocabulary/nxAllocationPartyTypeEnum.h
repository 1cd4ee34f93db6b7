#pragma once

#include "core/vocabulary/nxEnum.h"

/// Allocation party type.
class NX_CORE_API nxAllocationPartyTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxAllocationPartyTypeEnum, 10600, 10603)
};
