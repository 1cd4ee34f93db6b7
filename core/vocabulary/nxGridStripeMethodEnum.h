#pragma once

#include "core/vocabulary/nxEnum.h"

/// By what a grid's background changes shade: not at all, by row, or by group of rows.
class NX_CORE_API nxGridStripeMethodEnum : public nxEnum
{
    NX_ENUM_CLASS(nxGridStripeMethodEnum, 3500, 3504)
    NX_ENUM_LESS(nxGridStripeMethodEnum)
};
