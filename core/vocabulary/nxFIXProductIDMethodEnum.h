#pragma once

#include "core/vocabulary/nxEnum.h"

/// By which identifier FIX messages name a product.
class NX_CORE_API nxFIXProductIDMethodEnum : public nxEnum
{
    NX_ENUM_CLASS(nxFIXProductIDMethodEnum, 10400, 10404)
};
