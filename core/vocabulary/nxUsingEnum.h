#pragma once

#include "core/vocabulary/nxEnum.h"

/// The options of a database statement that writes: the time stamp or the time to live of what is
/// written.
class NX_CORE_API nxUsingEnum : public nxEnum
{
    NX_ENUM_CLASS(nxUsingEnum, 13700, 13703)

    /// The clause of a statement, "USING TIMESTAMP" or "USING TTL"; else empty.
    std::string GetAsOperator() const;
};
