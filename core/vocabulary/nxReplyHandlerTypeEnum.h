#pragma once

#include "core/vocabulary/nxEnum.h"

/// Whether the one who sent a request waits for its reply or is called when it comes.
class NX_CORE_API nxReplyHandlerTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxReplyHandlerTypeEnum, 13600, 13603)
    NX_ENUM_LESS(nxReplyHandlerTypeEnum)

    /// "SYNC" or "ASYNC", else empty.
    std::string GetSyncAsyncTypeStr() const;

    /// Appends the handler's part of a subject: ".SY", ".AS", ".UNDEFINED", ".NO_CHANGE", or ".UNKNOWN" for any
    /// other number.
    void AppendSubscriptionSubjectSuffix(std::string& subject) const;

    /// What AppendSubscriptionSubjectSuffix() appends.
    std::string GetSubscriptionSubjectSuffix() const;
};
