#pragma once

#include "core/vocabulary/nxEnum.h"

/// The state that an order is in. Any state may follow any other as far as this class goes: the order servers
/// decide.
class NX_CORE_API nxOrderStatusEnum : public nxEnum
{
    NX_ENUM_CLASS(nxOrderStatusEnum, 1100, 1111)

    /// True while the order is at work or may be: processing, held (by the gateway too), confirmed, and
    /// "unknown", but not "exchange timed out".
    bool IsWorkingOrder() const;

    /// The same as IsWorkingOrder(), by the name that screens use.
    bool IsWorkingOrderForGUIs() const;
};
