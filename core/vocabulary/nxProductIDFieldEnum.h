#pragma once

#include "core/vocabulary/nxEnum.h"

/// Product ID field.
class NX_CORE_API nxProductIDFieldEnum : public nxEnum
{
    NX_ENUM_CLASS(nxProductIDFieldEnum, 500, 512)
};
