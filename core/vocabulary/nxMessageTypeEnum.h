#pragma once

#include "core/vocabulary/nxEnum.h"

/// The role of a message on the bus: sent to all, asked, answered, or acknowledged.
class NX_CORE_API nxMessageTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxMessageTypeEnum, 50, 55)

    /// The type's part of a message's subject: "BX", "RQ", and "RP" for responses and receipts alike; else
    /// empty.
    std::string GetShortSubjectName() const;
};
