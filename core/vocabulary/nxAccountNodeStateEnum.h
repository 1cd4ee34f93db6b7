#pragma once

#include "core/vocabulary/nxEnum.h"

/// Whether an account or a group of accounts is in use.
class NX_CORE_API nxAccountNodeStateEnum : public nxEnum
{
    NX_ENUM_CLASS(nxAccountNodeStateEnum, 2800, 2803)

    /// The bare word for logs: "ACTIVE", "DELETED", "UNDEFINED" or "NO_CHANGE"; "NOT_RECOGNISED" for a number
    /// that only a copy can bring here.
    std::string GetAsLogString() const;
};
