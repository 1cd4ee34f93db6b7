#pragma once

#include "core/vocabulary/nxEnum.h"

/// When a synthetic spread pays up, giving price away to get its legs done.
class NX_CORE_API nxSyntheticSpreadPayupMethodEnum : public nxEnum
{
    NX_ENUM_CLASS(nxSyntheticSpreadPayupMethodEnum, 13000, 13004)
};
