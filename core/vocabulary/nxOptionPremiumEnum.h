#pragma once

#include "core/vocabulary/nxEnum.h"

/// How the premium of an option is paid: in full, or through the margin.
class NX_CORE_API nxOptionPremiumEnum : public nxEnum
{
    NX_ENUM_CLASS(nxOptionPremiumEnum, 551, 554)
};
