#pragma once

#include "core/vocabulary/nxEnum.h"

/// The three sections of a FIX message.
class NX_CORE_API nxFIXMessageSectionEnum : public nxEnum
{
    NX_ENUM_CLASS(nxFIXMessageSectionEnum, 8500, 8504)
};
