#pragma once

#include "core/vocabulary/nxEnum.h"

/// The comparisons of a database query.
class NX_CORE_API nxComparisonEnum : public nxEnum
{
    NX_ENUM_CLASS(nxComparisonEnum, 13500, 13507)

    /// The operator's sign in a query, such as "!="; else empty.
    std::string GetAsOperator() const;
};
