#pragma once

#include "core/vocabulary/nxEnum.h"

/// What is done to an item: it is added, modified or deleted.
class NX_CORE_API nxActionEnum : public nxEnum
{
    NX_ENUM_CLASS(nxActionEnum, 12450, 12454)
};
