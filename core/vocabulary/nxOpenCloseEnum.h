#pragma once

#include "core/vocabulary/nxEnum.h"

/// Whether an order opens a position or closes one; "close today" closes one that was opened the same day.
class NX_CORE_API nxOpenCloseEnum : public nxEnum
{
    NX_ENUM_CLASS(nxOpenCloseEnum, 1060, 1064)

    /// "O" open, "C" close, "T" close today, nothing for anything else.
    std::string GetAsCode() const;
};
