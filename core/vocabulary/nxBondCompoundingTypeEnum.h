#pragma once

#include "core/vocabulary/nxEnum.h"

/// Bond compounding type.
class NX_CORE_API nxBondCompoundingTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxBondCompoundingTypeEnum, 10100, 10103)
};
