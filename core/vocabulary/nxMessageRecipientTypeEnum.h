#pragma once

#include "core/vocabulary/nxEnum.h"

/// Message recipient type.
class NX_CORE_API nxMessageRecipientTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxMessageRecipientTypeEnum, 60, 67)
};
