#pragma once

#include "core/vocabulary/nxEnum.h"

/// Which side of a connection a program is on.
class NX_CORE_API nxClientServerEnum : public nxEnum
{
    NX_ENUM_CLASS(nxClientServerEnum, 70, 73)

    /// True for all but the server, so when undefined or "no change" too.
    bool IsClient() const;
    bool IsServer() const;
};
