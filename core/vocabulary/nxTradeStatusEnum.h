#pragma once

#include "core/vocabulary/nxEnum.h"

/// What has happened to a trade since it was made.
class NX_CORE_API nxTradeStatusEnum : public nxEnum
{
    NX_ENUM_CLASS(nxTradeStatusEnum, 1800, 1808)
};
