#pragma once

#include "core/vocabulary/nxEnum.h"

/// Interface category.
class NX_CORE_API nxInterfaceCategoryEnum : public nxEnum
{
    NX_ENUM_CLASS(nxInterfaceCategoryEnum, 1500, 1523)
};
