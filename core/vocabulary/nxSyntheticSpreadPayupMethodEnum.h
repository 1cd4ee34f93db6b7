#pragma once

#include "core/vocabulary/nxEnum.h"

/// Synthetic spread payup method.
class NX_CORE_API nxSyntheticSpreadPayupMethodEnum : public nxEnum
{
    NX_ENUM_CLASS(nxSyntheticSpreadPayupMethodEnum, 13000, 13004)
};
