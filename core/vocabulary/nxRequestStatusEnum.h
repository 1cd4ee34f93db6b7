#pragma once

#include "core/vocabulary/nxEnum.h"

/// Request status.
class NX_CORE_API nxRequestStatusEnum : public nxEnum
{
    NX_ENUM_CLASS(nxRequestStatusEnum, 250, 254)
};
