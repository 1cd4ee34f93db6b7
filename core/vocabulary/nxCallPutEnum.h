#pragma once

#include "core/vocabulary/nxEnum.h"
#include "core/vocabulary/nxErrorEnum.h"

/// The right that an option gives: to buy or to sell.
class NX_CORE_API nxCallPutEnum : public nxEnum
{
    NX_ENUM_CLASS(nxCallPutEnum, 20, 23)

    /// 'C' or 'P', '*' for anything else.
    char GetAsSingleCharacterCode() const;

    /// Sets the value from 'C' or 'P'.
    /// @return OK; NX_ERR_INVALID_PARAMETER for any other character, which leaves the value as it was.
    nxErrorEnum SetFromSingleCharacterCode(char code);
};
