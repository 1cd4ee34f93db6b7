#pragma once

#include "core/vocabulary/nxEnum.h"

/// Whether a user or a group of users may work.
class NX_CORE_API nxUserNodeStateEnum : public nxEnum
{
    NX_ENUM_CLASS(nxUserNodeStateEnum, 2850, 2854)

    /// The bare word for logs: "ACTIVE", "DISABLED", "DELETED", "UNDEFINED" or "NO_CHANGE"; "NOT_RECOGNISED"
    /// for a number that only a copy can bring here.
    std::string GetAsLogString() const;
};
