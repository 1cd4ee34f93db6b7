#pragma once

#include "core/vocabulary/nxEnum.h"

/// Which parts of a date and time a grid shows. The token of "Date and Time" ends in a tab, without which
/// it isn't found.
class NX_CORE_API nxGridDateTimeFormatEnum : public nxEnum
{
    NX_ENUM_CLASS(nxGridDateTimeFormatEnum, 14100, 14104)
    NX_ENUM_LESS(nxGridDateTimeFormatEnum)
};
