#pragma once

#include "core/vocabulary/nxEnum.h"

/// Data active status.
class NX_CORE_API nxDataActiveStatusEnum : public nxEnum
{
    NX_ENUM_CLASS(nxDataActiveStatusEnum, 7700, 7704)
};
