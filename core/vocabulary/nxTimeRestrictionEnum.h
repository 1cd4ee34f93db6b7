#pragma once

#include "core/vocabulary/nxEnum.h"

/// Time restriction.
class NX_CORE_API nxTimeRestrictionEnum : public nxEnum
{
    NX_ENUM_CLASS(nxTimeRestrictionEnum, 1030, 1040)
};
