#pragma once

#include "core/vocabulary/nxEnum.h"

/// Grid stripe method.
class NX_CORE_API nxGridStripeMethodEnum : public nxEnum
{
    NX_ENUM_CLASS(nxGridStripeMethodEnum, 3500, 3504)
    NX_ENUM_LESS(nxGridStripeMethodEnum)
};
