#pragma once

#include "core/vocabulary/nxEnum.h"

/// How the series of a product is written.
class NX_CORE_API nxSeriesNamingMethodEnum : public nxEnum
{
    NX_ENUM_CLASS(nxSeriesNamingMethodEnum, 16000, 16004)
    NX_ENUM_LESS(nxSeriesNamingMethodEnum)
};
