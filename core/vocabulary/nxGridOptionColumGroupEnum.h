#pragma once

#include "core/vocabulary/nxEnum.h"

/// The three groups of columns of an option grid: calls, the strikes in the centre, puts.
class NX_CORE_API nxGridOptionColumGroupEnum : public nxEnum
{
    NX_ENUM_CLASS(nxGridOptionColumGroupEnum, 9100, 9104)
    NX_ENUM_LESS(nxGridOptionColumGroupEnum)
};
