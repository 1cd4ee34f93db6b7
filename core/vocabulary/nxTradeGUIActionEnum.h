#pragma once

#include "core/vocabulary/nxEnum.h"

/// What a user does in the trade screen.
class NX_CORE_API nxTradeGUIActionEnum : public nxEnum
{
    NX_ENUM_CLASS(nxTradeGUIActionEnum, 5100, 5105)
};
