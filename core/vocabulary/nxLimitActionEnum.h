#pragma once

#include "core/vocabulary/nxEnum.h"

/// What is done when a limit is reached, in rising order.
class NX_CORE_API nxLimitActionEnum : public nxEnum
{
    NX_ENUM_CLASS(nxLimitActionEnum, 2600, 2605)
};
