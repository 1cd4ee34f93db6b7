#pragma once

#include "core/vocabulary/nxEnum.h"

/// The level of an exchange's hierarchy of products: product, series or outright.
class NX_CORE_API nxExchangeProductLevelEnum : public nxEnum
{
    NX_ENUM_CLASS(nxExchangeProductLevelEnum, 1700, 1704)
};
