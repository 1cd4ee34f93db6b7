#pragma once

#include "core/vocabulary/nxEnum.h"

/// The areas into which the platform's request interfaces are divided.
class NX_CORE_API nxInterfaceCategoryEnum : public nxEnum
{
    NX_ENUM_CLASS(nxInterfaceCategoryEnum, 1500, 1523)
};
