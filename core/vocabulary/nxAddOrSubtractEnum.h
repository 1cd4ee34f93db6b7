#pragma once

#include "core/vocabulary/nxEnum.h"

/// Whether a database statement adds to a value or subtracts from it.
class NX_CORE_API nxAddOrSubtractEnum : public nxEnum
{
    NX_ENUM_CLASS(nxAddOrSubtractEnum, 13800, 13803)

    /// "+" or "-", else empty.
    std::string GetAsOperator() const;
};
