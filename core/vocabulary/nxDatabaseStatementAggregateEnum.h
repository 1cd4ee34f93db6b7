#pragma once

#include "core/vocabulary/nxEnum.h"

/// The aggregates that a database query computes over rows.
class NX_CORE_API nxDatabaseStatementAggregateEnum : public nxEnum
{
    NX_ENUM_CLASS(nxDatabaseStatementAggregateEnum, 13900, 13906)

    /// The name of the query's function, such as "COUNT"; else empty.
    std::string GetAsOperator() const;
};
