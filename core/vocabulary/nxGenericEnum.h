#pragma once

#include "core/vocabulary/nxEnum.h"

/// A number of unknown class. It accepts every number that is no error, 1 included, which no other class
/// keeps.
class NX_CORE_API nxGenericEnum : public nxEnum
{
    NX_ENUM_CLASS(nxGenericEnum, 0, 999999)
};
