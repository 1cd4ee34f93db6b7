#pragma once

#include "core/vocabulary/nxEnum.h"

/// How the interest of a bond is compounded.
class NX_CORE_API nxBondCompoundingTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxBondCompoundingTypeEnum, 10100, 10103)
};
