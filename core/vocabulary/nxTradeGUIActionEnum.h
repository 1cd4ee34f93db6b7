#pragma once

#include "core/vocabulary/nxEnum.h"

/// Trade GUI action.
class NX_CORE_API nxTradeGUIActionEnum : public nxEnum
{
    NX_ENUM_CLASS(nxTradeGUIActionEnum, 5100, 5105)
};
