#pragma once

#include "core/vocabulary/nxEnum.h"

/// Database statement aggregate.
class NX_CORE_API nxDatabaseStatementAggregateEnum : public nxEnum
{
    NX_ENUM_CLASS(nxDatabaseStatementAggregateEnum, 13900, 13906)
};
