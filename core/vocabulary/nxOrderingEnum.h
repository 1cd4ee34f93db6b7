#pragma once

#include "core/vocabulary/nxEnum.h"

/// The direction of an order in a database query.
class NX_CORE_API nxOrderingEnum : public nxEnum
{
    NX_ENUM_CLASS(nxOrderingEnum, 13400, 13403)
};
