#pragma once

#include "core/vocabulary/nxEnum.h"

/// Order ticket type.
class NX_CORE_API nxOrderTicketTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxOrderTicketTypeEnum, 7900, 7907)
};
