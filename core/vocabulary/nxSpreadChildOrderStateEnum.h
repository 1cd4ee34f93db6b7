#pragma once

#include "core/vocabulary/nxEnum.h"

/// Where a child order of a synthetic spread stands.
class NX_CORE_API nxSpreadChildOrderStateEnum : public nxEnum
{
    NX_ENUM_CLASS(nxSpreadChildOrderStateEnum, 7100, 7109)
};
