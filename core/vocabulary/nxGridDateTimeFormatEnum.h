#pragma once

#include "core/vocabulary/nxEnum.h"

/// Grid date time format.
class NX_CORE_API nxGridDateTimeFormatEnum : public nxEnum
{
    NX_ENUM_CLASS(nxGridDateTimeFormatEnum, 14100, 14104)
    NX_ENUM_LESS(nxGridDateTimeFormatEnum)
};
