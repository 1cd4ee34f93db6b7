#pragma once

#include "core/vocabulary/nxEnum.h"
#include "core/vocabulary/nxErrorEnum.h"

/// Whether a position comes from real trades or was entered by a user.
class NX_CORE_API nxPositionTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxPositionTypeEnum, 8900, 8903)

    /// Sets the value from 'R' or 'U'; any other character clears it.
    /// @return always OK.
    nxErrorEnum SetFromSingleCharacterCode(char code);

    /// 'R' or 'U', '*' for anything else.
    char GetAsSingleCharacterCode() const;
};
