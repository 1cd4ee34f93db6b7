#pragma once

#include "core/vocabulary/nxEnum.h"
#include "core/vocabulary/nxErrorEnum.h"

/// How far an account has gone against its limits, and what has been done about it.
class NX_CORE_API nxLimitAccountStateEnum : public nxEnum
{
    NX_ENUM_CLASS(nxLimitAccountStateEnum, 2700, 2707)
    NX_ENUM_LESS(nxLimitAccountStateEnum)

    /// True when `other` stands higher than this state in the order active, warning sent, severe warning
    /// sent, restricted, disabled. States outside of that order, "awaiting data" among them, are neither
    /// worse than others nor can others be worse.
    bool IsWorse(nxLimitAccountStateEnum const& other) const;

    /// Takes the other state if it is worse.
    /// @return whether it was taken.
    bool SetIfWorse(nxLimitAccountStateEnum const& other);

    /// Why the account can't trade: NX_ERR_LIMIT_ACCOUNT_NOT_READY when awaiting data,
    /// NX_ERR_LIMIT_ACCOUNT_RESTRICTED, NX_ERR_LIMIT_ACCOUNT_DISABLED; OK for all else, so with warnings too.
    nxErrorEnum GetEquivalentError() const;
};
