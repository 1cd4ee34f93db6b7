#pragma once

#include "core/vocabulary/nxEnum.h"

/// Option premium.
class NX_CORE_API nxOptionPremiumEnum : public nxEnum
{
    NX_ENUM_CLASS(nxOptionPremiumEnum, 551, 554)
};
