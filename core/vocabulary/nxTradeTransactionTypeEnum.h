#pragma once

#include "core/vocabulary/nxEnum.h"

/// What a transaction does to a trade. A modification is two transactions: the rollback of the old trade and
/// the application of the new one.
class NX_CORE_API nxTradeTransactionTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxTradeTransactionTypeEnum, 1900, 1906)

    /// The sign with which the transaction enters the position: 1, -1 for those that take a trade out, else
    /// 0.
    int GetMultiplier() const;
};
