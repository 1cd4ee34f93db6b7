#pragma once

#include "core/vocabulary/nxEnum.h"

/// Application type.
class NX_CORE_API nxApplicationTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxApplicationTypeEnum, 400, 499)
};
