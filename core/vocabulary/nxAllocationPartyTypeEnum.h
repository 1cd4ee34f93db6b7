#pragma once

#include "core/vocabulary/nxEnum.h"

/// The party to which a trade is allocated.
class NX_CORE_API nxAllocationPartyTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxAllocationPartyTypeEnum, 10600, 10603)
};
