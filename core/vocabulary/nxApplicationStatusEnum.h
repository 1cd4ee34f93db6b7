#pragma once

#include "core/vocabulary/nxEnum.h"

/// How far a program has come between its start and its end. "AWAITING_ACTIVATION" and "ACTIVATING" are
/// the states of a server that stands by for another.
class NX_CORE_API nxApplicationStatusEnum : public nxEnum
{
    NX_ENUM_CLASS(nxApplicationStatusEnum, 200, 209)

    /// True from the request to shut down on: requested, shutting down, destroying the API.
    bool IsShuttingDownOrStopping() const;
};
