#pragma once

#include "core/vocabulary/nxEnum.h"

/// FT action.
class NX_CORE_API nxFTActionEnum : public nxEnum
{
    NX_ENUM_CLASS(nxFTActionEnum, 5710, 5714)
};
