#pragma once

#include "core/vocabulary/nxEnum.h"

/// The channels among which the traffic of the bus is divided, that within one process and the two direct
/// routes included.
class NX_CORE_API nxMessageChannelEnum : public nxEnum
{
    NX_ENUM_CLASS(nxMessageChannelEnum, 300, 310)
    NX_ENUM_LESS(nxMessageChannelEnum)

    /// Appends the channel's part of a subject, ".CH" and the channel's place counted from 0; ".UNDEFINED" and
    /// ".NO_CHANGE" for these states.
    void AppendSubscriptionSubjectSuffix(std::string& subject) const;

    /// What AppendSubscriptionSubjectSuffix() appends.
    std::string GetSubscriptionSubjectSuffix() const;
};
