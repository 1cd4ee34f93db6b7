#pragma once

#include "core/vocabulary/nxEnum.h"

/// A filter for queries: the nodes or data in use, those no longer in use, or both.
class NX_CORE_API nxDataActiveStatusEnum : public nxEnum
{
    NX_ENUM_CLASS(nxDataActiveStatusEnum, 7700, 7704)

    /// The last fragment of a key into an indexed map: a point and the token for active and inactive, ".*"
    /// for anything else.
    std::string GetIndexedMapTail() const;
};
