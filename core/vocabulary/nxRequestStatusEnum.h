#pragma once

#include "core/vocabulary/nxEnum.h"

/// What a pending request still waits for.
class NX_CORE_API nxRequestStatusEnum : public nxEnum
{
    NX_ENUM_CLASS(nxRequestStatusEnum, 250, 254)
};
