#pragma once

#include "core/vocabulary/nxEnum.h"

/// Whom a message is meant for, as its subject names them.
class NX_CORE_API nxMessageRecipientTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxMessageRecipientTypeEnum, 60, 67)

    /// The recipient's part of a message's subject, "UN" when there is none. It is not always the token: a
    /// server is "SRV" here, a local one "LSRV".
    std::string GetShortSubjectName() const;
};
