#pragma once

#include "core/vocabulary/nxEnum.h"

/// Whether a product can be traded or is only kept for reports and history.
class NX_CORE_API nxProductStatusEnum : public nxEnum
{
    NX_ENUM_CLASS(nxProductStatusEnum, 4000, 4005)
};
