#pragma once

#include "core/vocabulary/nxEnum.h"

/// The types of FIX message, for orders and for the session itself.
class NX_CORE_API nxFIXMessageTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxFIXMessageTypeEnum, 5200, 5214)

    /// True for the messages that carry orders and what became of them, false for those of the session.
    bool IsOrderRelated() const;
};
