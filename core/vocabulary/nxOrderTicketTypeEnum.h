#pragma once

#include "core/vocabulary/nxEnum.h"

/// The layouts of an order ticket.
class NX_CORE_API nxOrderTicketTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxOrderTicketTypeEnum, 7900, 7907)
};
